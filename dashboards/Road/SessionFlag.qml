import QtQuick 2.15

Rectangle {
    id: flag

    property string text
    property color cloth: "black"
    property color ink: "white"
    property color rim: "white"
    property bool divided: false
    property int fontSize: 16

    radius: 4
    antialiasing: true
    color: cloth
    border.width: 1.5
    border.color: rim

    // A small flag on its pole.
    Item {
        id: symbol

        x: 9
        width: 17
        height: 14
        anchors.verticalCenter: parent.verticalCenter

        Rectangle {
            width: 2
            height: parent.height
            antialiasing: true
            color: flag.ink
        }

        Rectangle {
            x: 3
            width: 14
            height: 9
            antialiasing: true
            color: flag.divided ? flag.cloth : "transparent"
            border.width: 1.5
            border.color: flag.ink
        }

        Rectangle {
            visible: flag.divided
            x: 10
            width: 7
            height: 9
            antialiasing: true
            color: flag.ink
        }
    }

    Label {
        anchors.left: symbol.right
        anchors.right: parent.right
        anchors.rightMargin: flag.fontSize > 12 ? 26 : 4
        anchors.verticalCenter: parent.verticalCenter
        color: flag.ink
        font.pixelSize: flag.fontSize
        font.bold: true
        font.letterSpacing: flag.fontSize > 12 ? 1.5 : 0
        text: flag.text
    }
}
