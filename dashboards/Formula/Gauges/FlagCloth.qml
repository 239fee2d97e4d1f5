import QtQuick 2.15
import "Theme.js" as Theme

// One flag of FlagCloths.
//   text, cloth, ink, rim
//   bars        at both ends, narrower towards the name
//   otherText   of the right half, in swapped colours; empty leaves the cloth whole
Rectangle {
    id: flag

    property string text
    property string otherText
    property color cloth: "black"
    property color ink: "white"
    property color rim: "white"
    property int bars: 0

    readonly property bool divided: otherText !== ""
    // Only the name fits on a narrow cloth.
    readonly property real barPitch: width >= 200 ? 22 : 0
    readonly property real nameX: barPitch * bars + 6

    color: cloth
    border.width: 2
    border.color: rim

    Rectangle {
        visible: flag.divided
        x: parent.width / 2
        width: parent.width / 2
        height: parent.height
        color: flag.ink
    }

    Repeater {
        model: flag.barPitch > 0 ? flag.bars : 0

        Item {
            readonly property real barWidth: flag.bars === 1 ? 16 : 18 - 4.5 * index

            Rectangle {
                x: index * flag.barPitch
                width: parent.barWidth
                height: flag.height
                color: flag.ink
            }

            Rectangle {
                x: flag.width - index * flag.barPitch - width
                width: parent.barWidth
                height: flag.height
                color: flag.ink
            }
        }
    }

    Label {
        x: flag.nameX
        width: (flag.divided ? flag.width / 2 : flag.width) - 2 * x
        height: parent.height
        fits: true
        color: flag.ink
        font.pixelSize: 25
        font.bold: true
        text: flag.text
    }

    Label {
        x: flag.width / 2 + flag.nameX
        width: flag.width / 2 - 2 * flag.nameX
        height: parent.height
        visible: flag.divided
        fits: true
        color: flag.cloth
        font.pixelSize: 25
        font.bold: true
        text: flag.otherText
    }
}
