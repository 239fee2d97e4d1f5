import QtQuick 2.15
import "Theme.js" as Theme

// A cell of the page: a caption in the colour of its group, and a value flush right.
//   caption, text, unit
//   known      whether the value is known; otherwise a faint dash shows instead
//   tone       of the caption
//   flat       the caption is before the value, not above it
//   fill       the cell's own colour
//   watched, acting   whether the source tells when a system acts, shown by an outline, and whether
//              it acts now, which fills the cell with `tone`
Rectangle {
    id: cell

    property string caption
    property string text
    property string unit
    property bool known: true
    property bool flat: false
    property color tone: Theme.muted
    property color fill: Theme.faceTop
    property color valueColor: Theme.ink
    property int valueSize: 25
    property bool watched: false
    property bool acting: false

    readonly property bool filled: watched && acting
    readonly property real valueX: flat ? 38 : 5

    implicitWidth: 144
    implicitHeight: 40
    color: filled ? tone : fill

    Label {
        x: 5
        y: cell.flat ? 0 : 2
        width: cell.flat ? 31 : parent.width - 10
        height: cell.flat ? parent.height : 12
        horizontalAlignment: Text.AlignLeft
        fits: true
        color: cell.filled ? Theme.inkOnBright : cell.tone
        font.pixelSize: cell.flat ? 13 : Theme.labelSize
        font.bold: true
        text: cell.caption
    }

    Label {
        x: cell.valueX
        y: cell.flat ? 0 : 12
        width: parent.width - x - 5 - (unitLabel.text === "" ? 0 : unitLabel.width + 2)
        height: parent.height - y
        horizontalAlignment: Text.AlignRight
        fits: true
        color: cell.filled ? Theme.inkOnBright : cell.known ? cell.valueColor : Theme.faint
        font.pixelSize: cell.valueSize
        font.bold: true
        text: cell.known ? cell.text : "–"
    }

    Label {
        id: unitLabel

        anchors.right: parent.right
        anchors.rightMargin: 5
        anchors.bottom: parent.bottom
        anchors.bottomMargin: cell.flat ? 6 : 5
        font.pixelSize: 12
        text: cell.known ? cell.unit : ""
    }

    Rectangle {
        visible: cell.watched && !cell.filled
        width: parent.width
        height: 2
        antialiasing: true
        color: cell.tone
    }
}
