import QtQuick 2.15
import "Theme.js" as Theme

// The car's acceleration as a dot in a circle, as the driver feels it: braking up, a right turn to
// the left.
//   surge, sway   dash_surgeG and dash_swayG
//   range         g at the outer ring
Item {
    id: meter

    property real surge: 0
    property real sway: 0
    property real range: 2
    property color dotColor: Theme.accent
    readonly property real radius: width / 2
    readonly property real length: Math.sqrt(surge * surge + sway * sway)
    // Values beyond the ring stay on it; NaN and infinity show in the middle.
    readonly property real pixelsPerG: isFinite(length) ? radius / Math.max(range, length) : 0

    implicitWidth: 72
    implicitHeight: width

    Repeater {
        model: 2

        Rectangle {
            anchors.centerIn: parent
            width: meter.width * (index + 1) / 2
            height: width
            radius: width / 2
            antialiasing: true
            color: "transparent"
            border.width: 1
            border.color: Theme.metal
        }
    }

    Rectangle {
        anchors.centerIn: parent
        width: parent.width
        height: 1
        antialiasing: true
        color: Theme.ghost
    }

    Rectangle {
        anchors.centerIn: parent
        width: 1
        height: parent.height
        antialiasing: true
        color: Theme.ghost
    }

    Rectangle {
        x: meter.radius - (meter.pixelsPerG > 0 ? meter.sway * meter.pixelsPerG : 0) - width / 2
        y: meter.radius + (meter.pixelsPerG > 0 ? meter.surge * meter.pixelsPerG : 0) - height / 2
        width: Math.max(6, meter.width / 9)
        height: width
        radius: width / 2
        antialiasing: true
        color: meter.dotColor
    }
}
