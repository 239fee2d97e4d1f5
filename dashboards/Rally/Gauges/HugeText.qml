import QtQuick 2.15
import "Theme.js" as Theme

// Bold text as large as its box, centred by the height of its capitals.
Label {
    fits: true
    color: Theme.ink
    font.bold: true
    // The font leaves room for descenders, which it doesn't have.
    topPadding: font.pixelSize * 0.195
}
