import QtQuick 2.15
import "Theme.js" as Theme

// A line of a table with values in several columns of equal width.
//   label, texts, known   one of each for a column; `known` may be left out
//   heading               whether the line is the head of its table
Item {
    id: line

    property string label
    property var texts: []
    property var known: []
    property bool heading: false
    property real labelWidth: 40
    property int size: 12
    readonly property real columnWidth: (width - labelWidth) / texts.length

    implicitWidth: 100
    implicitHeight: 13

    Rectangle {
        y: parent.height - height
        width: parent.width
        height: line.heading ? 1 : 0.5
        antialiasing: true
        color: line.heading ? Theme.muted : Theme.metal
    }

    Label {
        width: line.labelWidth
        height: parent.height
        horizontalAlignment: Text.AlignLeft
        fits: true
        font.pixelSize: 10
        text: line.label
    }

    Repeater {
        model: line.texts.length

        Label {
            readonly property bool isKnown: index >= line.known.length || line.known[index]

            x: line.labelWidth + index * line.columnWidth + 2
            width: line.columnWidth - 2
            height: line.height
            horizontalAlignment: Text.AlignRight
            fits: true
            color: line.heading ? Theme.muted : isKnown ? Theme.ink : Theme.faint
            font.pixelSize: line.heading ? 10 : line.size
            font.bold: !line.heading
            text: isKnown ? line.texts[index] : "–"
        }
    }
}
