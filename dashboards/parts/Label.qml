import QtQuick 2.15
import "Theme.js" as Theme

// Text in the dashboard's font, muted and small unless told otherwise; `font`, `color` and the
// alignments are those of Text.
//   fits   whether text that is too long for its width gets smaller
Text {
    id: label

    property bool fits: false
    readonly property FontLoader regular: FontLoader { source: Theme.fontFiles[0] }
    readonly property FontLoader bold: FontLoader { source: Theme.fontFiles[1] }

    color: Theme.muted
    font.family: Theme.fontFamily
    font.kerning: Theme.kerning
    font.hintingPreference: Font.PreferVerticalHinting // Equally wide on every system.
    font.pixelSize: Theme.labelSize
    fontSizeMode: fits ? Text.HorizontalFit : Text.FixedSize
    minimumPixelSize: 5
    textFormat: Text.PlainText
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
}
