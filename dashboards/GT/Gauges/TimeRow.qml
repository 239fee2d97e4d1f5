import QtQuick 2.15
import "Theme.js" as Theme

// A lap time on a plate after its caption.
//   caption, time, tone
Rectangle {
    id: row

    property string caption
    property string time
    property color tone: Theme.ink

    implicitWidth: 152
    implicitHeight: 27
    radius: 4
    antialiasing: true
    color: Theme.faceTop

    Label {
        x: 8
        width: 34
        height: parent.height
        horizontalAlignment: Text.AlignLeft
        font.pixelSize: 13
        font.bold: true
        text: row.caption
    }

    Label {
        x: 44
        width: parent.width - 52
        height: parent.height
        horizontalAlignment: Text.AlignRight
        fits: true
        color: row.tone
        font.pixelSize: 23
        font.bold: true
        text: row.time
    }
}
