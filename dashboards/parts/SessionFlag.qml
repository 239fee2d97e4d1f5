import QtQuick 2.15
import "Theme.js" as Theme

// One flag of a FlagBand: cloth with its name, and a small flag on a pole if `roomy`.
Rectangle {
    id: flag

    property string text
    property color cloth: "black"
    property color ink: "white"
    property color rim: "white"
    property bool divided: false
    property bool roomy: true

    radius: 4
    antialiasing: true
    color: cloth
    border.width: 1.5
    border.color: rim

    // A small flag on its pole.
    Item {
        id: symbol

        x: 9
        visible: flag.roomy
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
        anchors.fill: parent
        anchors.leftMargin: flag.roomy ? symbol.x + symbol.width : 0
        anchors.rightMargin: anchors.leftMargin
        color: flag.ink
        font.pixelSize: flag.roomy ? 16 : 13
        font.bold: true
        fits: true
        font.letterSpacing: flag.roomy ? 1 : 0
        text: flag.text
    }
}
