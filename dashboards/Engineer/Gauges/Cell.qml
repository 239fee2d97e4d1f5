import QtQuick 2.15
import "Theme.js" as Theme

// A line of a table: label at the left, value at the right, a hairline below.
//   label, text
//   known      whether the value is known; otherwise a faint dash shows instead
//   lit        whether it is highlighted, as a system that acts now
//   labelWidth, valueColor, size
Item {
    id: cell

    property string label
    property string text
    property bool known: true
    property bool lit: false
    property real labelWidth: width * 0.5
    property color valueColor: Theme.ink
    property int size: 12

    implicitWidth: 100
    implicitHeight: 13

    Rectangle {
        y: parent.height - height
        width: parent.width
        height: 0.5
        antialiasing: true
        color: Theme.metal
    }

    Label {
        width: cell.labelWidth
        height: parent.height
        horizontalAlignment: Text.AlignLeft
        fits: true
        font.pixelSize: 10
        text: cell.label
    }

    Label {
        x: cell.labelWidth + 2
        width: parent.width - x
        height: parent.height
        horizontalAlignment: Text.AlignRight
        fits: true
        color: !cell.known ? Theme.faint : cell.lit ? Theme.accent : cell.valueColor
        font.pixelSize: cell.size
        font.bold: true
        text: cell.known ? cell.text : "–"
    }
}
