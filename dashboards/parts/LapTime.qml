import QtQuick 2.15
import "Theme.js" as Theme

// A time with its caption above.
//   label, time   the caption, and dash_*Time_str
//   known         whether the time is known; otherwise a faint dash shows instead
//   mirrored      flush right
//   timeSize
Item {
    id: lapTime

    property string label
    property string time
    property bool known: true
    property bool mirrored: false
    property int timeSize: 20
    property color timeColor: Theme.ink

    implicitWidth: 110
    implicitHeight: timeSize + 14

    Label {
        width: parent.width
        horizontalAlignment: lapTime.mirrored ? Text.AlignRight : Text.AlignLeft
        text: lapTime.label
    }

    Label {
        width: parent.width
        anchors.bottom: parent.bottom
        horizontalAlignment: lapTime.mirrored ? Text.AlignRight : Text.AlignLeft
        fits: true
        color: lapTime.known ? lapTime.timeColor : Theme.faint
        font.pixelSize: lapTime.timeSize
        font.bold: true
        text: lapTime.known ? lapTime.time : "–"
    }
}
