import QtQuick 2.15

// A lamp: an outline while out, its own colour while armed, filled while lit.
Rectangle {
    id: lamp

    property string text
    property bool lit: false
    property bool armed: false
    property color litColor: theme.caution
    readonly property Theme theme: Theme {}

    width: 38
    height: 22
    radius: 5
    antialiasing: true
    color: lit ? litColor : "transparent"
    border.width: 1
    border.color: lit || armed ? litColor : theme.ghost

    Label {
        anchors.fill: parent
        color: lamp.lit ? lamp.theme.inkOnBright : lamp.armed ? lamp.litColor : "#59636d"
        font.pixelSize: 13
        font.bold: true
        text: lamp.text
    }
}
