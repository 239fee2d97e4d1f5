import QtQuick 2.15
import "Theme.js" as Theme

// A setting of the car in its own colour, with caption and value; filled while the system acts.
//   caption, text
//   known   whether the value is known; otherwise a faint dash shows instead
//   watched, acting   whether the source tells when the system acts, shown by the stripe, and whether it
//                     acts now, which fills the tile
//   tone
Rectangle {
    id: tile

    property string caption
    property string text
    property bool known: true
    property bool watched: true
    property bool acting: false
    readonly property bool filled: watched && acting
    property color tone: Theme.ink

    // A switch has none.
    readonly property bool hasValue: text !== "" || !known

    implicitWidth: 72
    implicitHeight: 38
    radius: 4
    antialiasing: true
    color: filled ? tone : Theme.faceTop

    Rectangle {
        visible: !tile.filled
        width: 4
        height: parent.height
        radius: 2
        antialiasing: true
        color: tile.watched ? tile.tone : Theme.ghost
    }

    Label {
        x: 9
        width: tile.hasValue ? 30 : parent.width - 18
        height: parent.height
        horizontalAlignment: tile.hasValue ? Text.AlignLeft : Text.AlignHCenter
        fits: true
        color: tile.filled ? Theme.inkOnBright : tile.tone
        font.pixelSize: 15
        font.bold: true
        text: tile.caption
    }

    Label {
        x: 38
        width: parent.width - 45
        height: parent.height
        horizontalAlignment: Text.AlignRight
        fits: true
        color: tile.filled ? Theme.inkOnBright : tile.known ? Theme.ink : Theme.faint
        font.pixelSize: 27
        font.bold: true
        text: tile.known ? tile.text : "–"
    }
}
