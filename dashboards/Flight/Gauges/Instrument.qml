import QtQuick 2.15
import "Theme.js" as Theme

// A round face in a square case with a screw in each corner. Children lie on the face.
Item {
    id: instrument

    readonly property real middle: width / 2
    readonly property real faceRadius: middle - 5
    default property alias contents: face.data

    implicitWidth: 130
    implicitHeight: width

    Rectangle {
        anchors.fill: parent
        radius: 13
        antialiasing: true
        border.width: 1
        border.color: Theme.bezelEdge
        color: Theme.crackle
    }

    Repeater {
        model: 4

        Rectangle {
            z: 1
            x: index % 2 === 0 ? 5 : instrument.width - width - 5
            y: index < 2 ? 5 : instrument.height - height - 5
            width: 8
            height: 8
            radius: 4
            rotation: 35 + 80 * index
            antialiasing: true
            color: Theme.metal
            border.width: 0.8
            border.color: Theme.bezelEdge

            Rectangle {
                anchors.centerIn: parent
                width: 6
                height: 1.2
                antialiasing: true
                color: Theme.bezelEdge
            }
        }
    }

    Rectangle {
        anchors.centerIn: parent
        width: 2 * instrument.faceRadius
        height: width
        radius: width / 2
        antialiasing: true
        border.width: 2
        border.color: Theme.bezelEdge
        gradient: Gradient {
            GradientStop { position: 0.0; color: Theme.faceTop }
            GradientStop { position: 1.0; color: Theme.faceBottom }
        }
    }

    Item {
        id: face

        anchors.fill: parent
    }
}
