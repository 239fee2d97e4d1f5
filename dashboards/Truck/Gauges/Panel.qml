import QtQuick 2.15
import "Theme.js" as Theme

// A pane of the cluster's glass.
Rectangle {
    radius: 10
    antialiasing: true
    gradient: Gradient {
        GradientStop { position: 0.0; color: Theme.faceTop }
        GradientStop { position: 1.0; color: Theme.faceBottom }
    }
    border.width: 1
    border.color: Theme.ghost
}
