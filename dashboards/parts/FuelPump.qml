import QtQuick 2.15
import "Theme.js" as Theme

// The symbol of a fuel pump.
Item {
    id: pump

    property color color: "white"

    implicitWidth: 12
    implicitHeight: 13

    Rectangle {
        width: 7
        height: 12
        radius: 1
        antialiasing: true
        color: "transparent"
        border.width: 1.4
        border.color: pump.color
    }

    Rectangle {
        y: 5
        width: 7
        height: 7
        antialiasing: true
        color: pump.color
    }

    Rectangle {
        y: 12
        x: -1
        width: 9
        height: 1.4
        antialiasing: true
        color: pump.color
    }

    Rectangle {
        x: 7
        y: 3
        width: 4.4
        height: 8
        radius: 2
        antialiasing: true
        color: "transparent"
        border.width: 1.2
        border.color: pump.color
    }
}
