import QtQuick 2.15
import "Theme.js" as Theme

// A ring that fills with speed, open at the bottom, with room for numbers inside.
//   value, majorStep, majorCount   in the scale's unit; the scale begins at 0
Item {
    id: ring

    property real value: 0
    property real majorStep: 20
    property int majorCount: 7

    readonly property real sweep: 240
    readonly property real share: Math.max(0, Math.min(1, value / (majorStep * majorCount)))

    implicitWidth: 204
    implicitHeight: width

    Rectangle {
        anchors.fill: parent
        radius: width / 2
        antialiasing: true
        gradient: Gradient {
            GradientStop { position: 0.0; color: Theme.faceTop }
            GradientStop { position: 0.7; color: Theme.night }
        }
        border.width: 1
        border.color: Theme.ghost
    }

    ArcBar {
        anchors.fill: parent
        anchors.margins: 5
        value: ring.share
        startAngle: -ring.sweep / 2
        sweep: ring.sweep
        thickness: 11
        blocks: 70
        gap: 0.9
    }

    Repeater {
        model: ring.majorCount + 1

        Label {
            readonly property real angle: (index / ring.majorCount - 0.5) * ring.sweep * Math.PI / 180
            readonly property real reach: ring.width / 2 - 29

            x: ring.width / 2 + Math.sin(angle) * reach - width / 2
            y: ring.height / 2 - Math.cos(angle) * reach - height / 2
            width: 26
            height: 16
            color: Theme.muted
            font.pixelSize: 13
            font.bold: true
            text: index * ring.majorStep
        }
    }

    // The bar moves in steps; this is exact.
    Item {
        anchors.fill: parent
        rotation: (ring.share - 0.5) * ring.sweep

        Rectangle {
            x: (parent.width - width) / 2
            y: 1
            width: 5
            height: 20
            radius: 2.5
            antialiasing: true
            color: Theme.ink
        }
    }
}
