import QtQuick 2.15

// The areas of the layout over a grid of `pitch`, for who moves things about.
Item {
    id: markers

    property var areas: []
    property real pitch: 24
    readonly property color line: "#4000d0ff"

    Repeater {
        model: Math.floor(markers.width / markers.pitch)

        Rectangle {
            x: (index + 1) * markers.pitch
            width: 0.5
            height: markers.height
            antialiasing: true
            color: markers.line
        }
    }

    Repeater {
        model: Math.floor(markers.height / markers.pitch)

        Rectangle {
            y: (index + 1) * markers.pitch
            width: markers.width
            height: 0.5
            antialiasing: true
            color: markers.line
        }
    }

    Repeater {
        model: markers.areas

        Rectangle {
            x: modelData.x
            y: modelData.y
            width: modelData.width
            height: modelData.height
            antialiasing: true
            color: "transparent"
            border.width: 1
            border.color: "#00d0ff"
        }
    }
}
