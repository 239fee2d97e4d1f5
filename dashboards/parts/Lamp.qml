import QtQuick 2.15
import "Theme.js" as Theme

// A lamp: an outline while out, its own colour while armed, filled while lit.
//   text, lit, armed, litColor, textSize
Rectangle {
    id: lamp

    property string text
    property bool lit: false
    property bool armed: false
    property int textSize: 13
    property color litColor: Theme.caution

    implicitWidth: 38
    implicitHeight: 22
    radius: 5
    antialiasing: true
    color: lit ? litColor : "transparent"
    border.width: 1
    border.color: lit || armed ? litColor : Theme.ghost

    Label {
        anchors.fill: parent
        color: lamp.lit ? Theme.inkOnBright : lamp.armed ? lamp.litColor : Theme.faint
        font.pixelSize: lamp.textSize
        fits: true
        font.bold: true
        text: lamp.text
    }
}
