import QtQuick 2.15
import "Theme.js" as Theme

// Seven-segment digits over their unlit segments, right-aligned in a fixed number of cells.
//   text        digits, "-" and blanks; longer text shows as dashes
//   cells       how many digits fit
//   pixelSize   of the digits' height, about
//   color, ghostColor   of lit and of unlit segments
Item {
    id: display

    property string text
    property int cells: 3
    property int pixelSize: 32
    property color color: Theme.ink
    property color ghostColor: "#14ffffff"
    // The font's "!" is a digit with nothing lit.
    readonly property string shown: text.length > cells ? "-".repeat(cells)
        : "!".repeat(cells - text.length) + text.replace(/ /g, "!").replace("−", "-")
    readonly property FontLoader loader: FontLoader { source: Theme.segmentFile }

    implicitWidth: unlit.implicitWidth
    implicitHeight: pixelSize

    Text {
        id: unlit

        objectName: "ghost"
        anchors.fill: parent
        color: display.ghostColor
        font.family: Theme.segmentFamily
        font.hintingPreference: Font.PreferVerticalHinting
        font.bold: true
        font.pixelSize: display.pixelSize
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
        text: "8".repeat(display.cells)
    }

    Text {
        anchors.fill: parent
        color: display.color
        font: unlit.font
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
        text: display.shown
    }
}
