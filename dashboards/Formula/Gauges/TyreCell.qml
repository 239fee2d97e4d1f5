import QtQuick 2.15
import "Theme.js" as Theme

// A number for one wheel on the colour of its state.
//   caption, value, known
//   low, high   limits of the normal range
//   calm        the colour within it
//   detail      a second, small number in the corner
//   tread       share of tread left, as a bar at the edge; below 0 hides it
//   marked      whether the cell has a bright rim
Rectangle {
    id: cell

    property string caption
    property real value: 0
    property string unit
    property bool known: true
    property real low: 0
    property real high: 0
    property color calm: "#0b7a3c"
    property string detail
    property real tread: -1
    property bool marked: false

    readonly property color tone: !known ? Theme.ghost
        : value < low ? Theme.cold : value > high ? Theme.danger : calm

    implicitWidth: 71
    implicitHeight: 40
    color: known ? tone : Theme.faceTop
    border.width: marked ? 3 : 0
    border.color: Theme.white

    Rectangle {
        visible: cell.tread >= 0
        y: parent.height - height
        width: 4
        height: parent.height * Math.max(0, Math.min(1, cell.tread))
        opacity: 0.75
        color: Theme.ink
    }

    Label {
        x: 7
        y: 3
        width: cell.detail === "" ? parent.width - 12 : 18
        height: 12
        horizontalAlignment: Text.AlignLeft
        fits: true
        color: cell.known ? Theme.ink : Theme.faint
        font.bold: true
        text: cell.caption
    }

    Label {
        x: 25
        y: 3
        width: parent.width - 30
        height: 12
        horizontalAlignment: Text.AlignRight
        fits: true
        color: Theme.ink
        text: cell.detail
    }

    Label {
        x: 7
        y: 13
        width: parent.width - 12
        height: parent.height - 14
        horizontalAlignment: Text.AlignRight
        fits: true
        color: cell.known ? Theme.ink : Theme.faint
        font.pixelSize: 24
        font.bold: true
        // Without a sensor there is no value.
        text: !cell.known ? "–" : Math.abs(cell.value) > 9999 ? "–" : cell.value + cell.unit
    }
}
