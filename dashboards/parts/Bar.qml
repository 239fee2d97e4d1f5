import QtQuick 2.15
import "Theme.js" as Theme

// A bar in its slot, growing from `origin`.
//   value       share of the length, 0 to 1; other values are clamped
//   origin      where the bar begins: 0 at the left or the bottom, 0.5 for values with a sign
//   vertical    grows upwards instead of to the right
//   barColor, trackColor, corner (radius)
Rectangle {
    id: bar

    property real value: 0
    property real origin: 0
    property bool vertical: false
    property color trackColor: Theme.ghost
    property real corner: 2
    property alias barColor: fill.color

    // NaN fails the comparison, and so shows as nothing.
    readonly property real share: value > 0 ? Math.min(1, value) : value <= 0 ? 0 : origin
    readonly property real from: Math.min(origin, share)
    readonly property real extent: Math.abs(share - origin)

    implicitWidth: vertical ? 8 : 80
    implicitHeight: vertical ? 40 : 8
    radius: corner
    antialiasing: true
    color: trackColor

    Rectangle {
        id: fill

        x: bar.vertical ? 0 : bar.from * bar.width
        y: bar.vertical ? (1 - bar.from - bar.extent) * bar.height : 0
        width: bar.vertical ? bar.width : bar.extent * bar.width
        height: bar.vertical ? bar.extent * bar.height : bar.height
        radius: Math.min(bar.corner, width / 2, height / 2)
        antialiasing: true
        color: Theme.ink
    }
}
