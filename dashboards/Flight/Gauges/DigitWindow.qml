import QtQuick 2.15
import "Theme.js" as Theme

// Digits in a window of the face, for reading what the hands only show roughly.
Rectangle {
    id: frame

    property alias text: digits.text

    implicitWidth: 44
    implicitHeight: 17
    radius: 2
    antialiasing: true
    color: "#000000"
    border.width: 1
    border.color: Theme.metal

    Label {
        id: digits

        anchors.fill: parent
        anchors.leftMargin: 3
        anchors.rightMargin: 3
        horizontalAlignment: Text.AlignRight
        fits: true
        color: Theme.ink
        font.pixelSize: 13
        font.bold: true
    }
}
