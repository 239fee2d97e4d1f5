import QtQuick 2.15
import "Theme.js" as Theme

// A level: name and number above a bar, zones below it.
//   caption, text, unit, valueColor
//   available   whether it is known; otherwise a faint dash shows instead
//   share       of the bar, 0 to 1; barColor
//   zones       a list of { from, to, color } in shares of the bar
Item {
    id: gauge

    property string caption
    property string text
    property string unit
    property bool available: true
    property color valueColor: Theme.ink
    property alias share: bar.value
    property alias barColor: bar.barColor
    property var zones: []

    implicitWidth: 110
    implicitHeight: 52

    Label {
        id: name

        y: 10
        height: 16
        color: gauge.available ? Theme.muted : Theme.faint
        font.pixelSize: 12
        text: gauge.caption
    }

    Label {
        id: figure

        x: name.width + 4
        width: gauge.width - x - (unitLabel.width > 0 ? unitLabel.width + 3 : 0)
        height: 30
        horizontalAlignment: Text.AlignRight
        fits: true
        color: gauge.available ? gauge.valueColor : Theme.faint
        font.pixelSize: 27
        font.bold: true
        text: gauge.available ? gauge.text : "–"
    }

    Label {
        id: unitLabel

        x: gauge.width - width
        anchors.baseline: figure.baseline
        font.pixelSize: 13
        text: gauge.available ? gauge.unit : ""
    }

    Bar {
        id: bar

        y: 33
        width: gauge.width
        height: 10
        corner: 3
        barColor: Theme.accent
    }

    Repeater {
        model: gauge.zones

        Rectangle {
            x: modelData.from * gauge.width
            y: 45
            width: Math.max(0, modelData.to - modelData.from) * gauge.width
            height: 4
            antialiasing: true
            color: modelData.color
        }
    }
}
