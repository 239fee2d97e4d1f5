import QtQuick 2.15
import "Theme.js" as Theme

// A wheel that fills as its brake heats up, with the number on the inner side.
//   temp       °C
//   known      whether it is known; otherwise a faint dash shows instead
//   mirrored   for a wheel on the right
//   warmFrom, hotFrom, fullScale   °C
Item {
    id: corner

    property int temp: 0
    property bool known: true
    property bool mirrored: false
    property int warmFrom: 300
    property int hotFrom: 450
    property real fullScale: 700

    readonly property color tone: temp >= hotFrom ? Theme.danger
        : temp >= warmFrom ? Theme.caution : Theme.good

    implicitWidth: 58
    implicitHeight: 50

    Bar {
        id: wheel

        x: corner.mirrored ? corner.width - width : 0
        width: 17
        height: corner.height
        vertical: true
        corner: 5
        value: corner.known ? corner.temp / corner.fullScale : 0
        barColor: corner.tone
    }

    Label {
        x: corner.mirrored ? 0 : wheel.width + 4
        width: corner.width - wheel.width - 4
        height: corner.height
        horizontalAlignment: corner.mirrored ? Text.AlignRight : Text.AlignLeft
        fits: true
        color: !corner.known ? Theme.faint : corner.temp >= corner.warmFrom ? corner.tone : Theme.ink
        font.pixelSize: 20
        font.bold: true
        // Without a sensor there is no value.
        text: corner.known && corner.temp > -1000 && corner.temp < 10000
            ? String(corner.temp).replace("-", "−") : "–"
    }
}
