import QtQuick 2.15
import "Theme.js" as Theme

// Bold text as large as its box, in the box's middle by the height of its capitals.
Label {
    fits: true
    color: Theme.ink
    font.bold: true
    // The font leaves room below the line for letters that it doesn't have.
    topPadding: font.pixelSize * 0.195
}
