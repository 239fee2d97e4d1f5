import QtQuick 2.15
import "Theme.js" as Theme

// One quantity at the four wheels, in the order FL, FR, RL, RR.
//   label, unit
//   fl, fr, rl, rr, knowsFl, knowsFr, knowsRl, knowsRr   the values and their availability twins
//   coldBelow, hotAbove   limits; a bar below the value marks cold, one above it hot
Item {
    id: line

    property string label
    property string unit
    property real fl: 0
    property real fr: 0
    property real rl: 0
    property real rr: 0
    property bool knowsFl: true
    property bool knowsFr: true
    property bool knowsRl: true
    property bool knowsRr: true
    property real coldBelow: -Infinity
    property real hotAbove: Infinity
    property real labelWidth: 34
    readonly property real columnWidth: (width - labelWidth) / 4

    implicitHeight: 26

    Rectangle {
        y: parent.height - height
        width: parent.width
        height: 0.5
        antialiasing: true
        color: Theme.metal
    }

    Label {
        y: 2
        width: line.labelWidth
        height: 11
        horizontalAlignment: Text.AlignLeft
        fits: true
        font.pixelSize: 10
        text: line.label
    }

    Label {
        y: 13
        width: line.labelWidth
        height: 11
        horizontalAlignment: Text.AlignLeft
        fits: true
        font.pixelSize: 10
        color: Theme.faint
        text: line.unit
    }

    Repeater {
        model: 4

        Item {
            id: cell

            readonly property bool known: [line.knowsFl, line.knowsFr, line.knowsRl, line.knowsRr][index]
            readonly property real value: [line.fl, line.fr, line.rl, line.rr][index]
            // Without a sensor there is no value.
            readonly property bool sane: known && Math.abs(value) <= 9999
            readonly property bool hot: sane && value > line.hotAbove
            readonly property bool cold: sane && value < line.coldBelow

            x: line.labelWidth + index * line.columnWidth
            width: line.columnWidth
            height: line.height

            Rectangle {
                x: 3
                y: cell.hot ? 1 : parent.height - 4
                width: parent.width - 3
                height: 3
                visible: cell.hot || cell.cold
                color: cell.hot ? Theme.danger : Theme.cold
            }

            Label {
                x: 3
                y: 3
                width: parent.width - 4
                height: parent.height - 6
                horizontalAlignment: Text.AlignRight
                fits: true
                color: !cell.sane ? Theme.faint : cell.hot ? Theme.danger : cell.cold ? Theme.cold : Theme.ink
                font.pixelSize: 16
                font.bold: true
                text: cell.sane ? Math.round(cell.value) : "–"
            }
        }
    }
}
