import QtQuick 2.15

Item {
    id: lapTime

    property string label
    property string time
    property bool mirrored: false
    readonly property Theme theme: Theme {}

    height: 34

    Label {
        width: parent.width
        horizontalAlignment: lapTime.mirrored ? Text.AlignRight : Text.AlignLeft
        text: lapTime.label
    }

    Label {
        width: parent.width
        anchors.bottom: parent.bottom
        horizontalAlignment: lapTime.mirrored ? Text.AlignRight : Text.AlignLeft
        color: lapTime.theme.ink
        font.pixelSize: 20
        font.bold: true
        text: lapTime.time
    }
}
