import QtQuick 2.15
import "Theme.js" as Theme

// A time difference with its sign; green is faster, red slower.
//   seconds, digits   dash_deltaTime_s and dash_deltaTime_str
//   known             whether there is a best lap to compare with; otherwise nothing shows
// The size is `font.pixelSize`.
Label {
    id: delta

    property real seconds: 0
    property string digits
    property bool known: true

    width: 90
    height: 22
    visible: known && !isNaN(seconds)
    fits: true
    color: seconds > 0 ? Theme.danger : seconds < 0 ? Theme.good : Theme.muted
    font.pixelSize: 19
    font.bold: true
    text: (seconds > 0 ? "+" : "") + digits.replace("-", "−")
}
