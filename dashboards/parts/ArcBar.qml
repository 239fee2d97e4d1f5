import QtQuick 2.15
import "Theme.js" as Theme

// A bar bent around the middle of its square, made of blocks. With `gap` 0 it looks solid.
//   value            share of the sweep, 0 to 1
//   startAngle, sweep   degrees, 0 is up, clockwise; a negative sweep runs the other way
//   thickness, blocks, gap (degrees between blocks)
//   cautionFrom, dangerFrom   shares from which blocks change colour; above 1 is never
//   barColor, trackColor
Item {
    id: arc

    property real value: 0
    property real startAngle: -130
    property real sweep: 260
    property real thickness: 8
    property int blocks: 52
    property real gap: 1
    property real cautionFrom: 2
    property real dangerFrom: 2
    property color barColor: Theme.accent
    property color trackColor: Theme.ghost

    readonly property real radius: width / 2
    readonly property real step: sweep / blocks
    readonly property int lit: value > 0 ? Math.round(Math.min(1, value) * blocks) : 0

    implicitWidth: 100
    implicitHeight: width

    Repeater {
        model: arc.blocks

        Rectangle {
            readonly property real angle: arc.startAngle + arc.step * (index + 0.5)
            readonly property real share: (index + 1) / arc.blocks
            readonly property real middle: arc.radius - arc.thickness / 2

            // Wide enough to meet its neighbours at the outer edge.
            width: (Math.abs(arc.step) - arc.gap) * Math.PI / 180 * arc.radius + (arc.gap > 0 ? 0 : 0.6)
            height: arc.thickness
            x: arc.radius + Math.sin(angle * Math.PI / 180) * middle - width / 2
            y: arc.radius - Math.cos(angle * Math.PI / 180) * middle - height / 2
            rotation: angle
            antialiasing: true
            color: index >= arc.lit ? arc.trackColor
                : share > arc.dangerFrom ? Theme.danger
                : share > arc.cautionFrom ? Theme.caution
                : arc.barColor
        }
    }
}
