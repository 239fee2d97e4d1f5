import QtQuick 2.15

// Outlines of a layout's areas over a grid, for editing.
//   shown    dash_showMarkers
//   layout   the item whose children are outlined
//   pitch    of the grid
Loader {
    id: markers

    property bool shown: false
    property Item layout: parent
    property real pitch: 24
    readonly property color line: "#4000d0ff"

    anchors.fill: parent
    active: shown
    sourceComponent: Item {
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
            model: markers.layout.children

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
}
