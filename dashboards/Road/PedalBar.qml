import QtQuick 2.15

Item {
    id: bar

    property string label
    property int percent: 0
    property color color: "white"
    readonly property real share: Math.max(0, Math.min(1, percent / 100))
    readonly property Theme theme: Theme {}

    width: 12
    height: 40

    Rectangle {
        id: slot

        anchors.horizontalCenter: parent.horizontalCenter
        width: 8
        height: parent.height - 13
        radius: 2
        antialiasing: true
        color: bar.theme.ghost
    }

    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: slot.bottom
        width: 8
        height: slot.height * bar.share
        radius: Math.min(2, height / 2)
        antialiasing: true
        color: bar.color
    }

    Label {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        height: 12
        text: bar.label
    }
}
