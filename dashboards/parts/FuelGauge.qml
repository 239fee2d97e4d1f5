import QtQuick 2.15
import "Theme.js" as Theme

// A small round gauge with the number below.
//   percent   0 to 100
//   low       whether it is at or below the warning threshold
Item {
    id: gauge

    property int percent: 0
    property bool low: false
    readonly property real share: Math.max(0, Math.min(1, percent / 100))
    readonly property real sweep: 100
    readonly property real pivotY: 36
    readonly property real reach: 32
    readonly property color tone: low ? Theme.caution : Theme.ink

    implicitWidth: 84
    implicitHeight: 58

    Repeater {
        model: 9

        Rectangle {
            readonly property bool major: index % 4 === 0
            readonly property real angle: (index / 8 - 0.5) * gauge.sweep
            readonly property real middle: gauge.reach - height / 2

            width: major ? 2 : 1.1
            height: major ? 7 : 4
            x: gauge.width / 2 + Math.sin(angle * Math.PI / 180) * middle - width / 2
            y: gauge.pivotY - Math.cos(angle * Math.PI / 180) * middle - height / 2
            rotation: angle
            antialiasing: true
            color: index < 2 ? Theme.caution : major ? Theme.ink : Theme.muted
        }
    }

    Label {
        x: gauge.width / 2 - 25 - width / 2
        y: 20
        font.bold: true
        color: Theme.caution
        text: "E"
    }

    Label {
        x: gauge.width / 2 + 25 - width / 2
        y: 20
        font.bold: true
        color: Theme.ink
        text: "F"
    }

    Needle {
        x: gauge.width / 2
        y: gauge.pivotY
        rotation: (gauge.share - 0.5) * gauge.sweep
        length: gauge.reach - 5
        thickness: 2.4
        color: Theme.accent
    }

    Rectangle {
        x: gauge.width / 2 - 4
        y: gauge.pivotY - 4
        width: 8
        height: 8
        radius: 4
        antialiasing: true
        color: Theme.metal
    }

    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        spacing: 3

        FuelPump {
            anchors.verticalCenter: parent.verticalCenter
            color: gauge.tone
        }

        Label {
            color: gauge.tone
            font.pixelSize: 15
            font.bold: true
            text: (gauge.low ? "LOW " : "") + gauge.percent + "%"
        }
    }
}
