import QtQuick 2.15
import "Theme.js" as Theme

// The hub that holds the hands, in the middle of a face.
Rectangle {
    anchors.centerIn: parent
    width: 13
    height: 13
    radius: 6.5
    antialiasing: true
    color: Theme.bezelDark
    border.width: 1
    border.color: Theme.bezelEdge
}
