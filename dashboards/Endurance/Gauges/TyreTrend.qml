import QtQuick 2.15
import "Theme.js" as Theme

// A tyre: its temperature now and in the last minutes, pressure and wear below.
//   name
//   temp, pressure, wear   °C, kPa, percent, and their availability twins `*Known`
//   slipping      dash_wheelSlip_*
//   publication, resting   for the memory, see Trend
//   coldBelow, hotAbove    °C
Item {
    id: tyre

    property string name
    property int temp: 0
    property bool tempKnown: true
    property real pressure: 0
    property bool pressureKnown: true
    property int wear: 0
    property bool wearKnown: true
    property bool slipping: false
    property alias publication: trend.publication
    property alias resting: trend.resting
    property int coldBelow: 70
    property int hotAbove: 105

    readonly property int step: Math.round(Math.abs(trend.change))

    // Without a sensor there is no value.
    function figure(value) {
        return Math.abs(value) > 9999 ? "–" : value
    }

    implicitWidth: 142
    implicitHeight: 42

    Trend {
        id: trend

        value: tyre.temp
        known: tyre.tempKnown
    }

    Rectangle {
        width: 3
        height: parent.height - 4
        antialiasing: true
        color: tyre.slipping ? Theme.white
            : !tyre.tempKnown ? Theme.ghost
            : tyre.temp < tyre.coldBelow ? Theme.cold
            : tyre.temp > tyre.hotAbove ? Theme.danger : Theme.good
    }

    Label {
        x: 8
        width: 48
        height: 26
        horizontalAlignment: Text.AlignLeft
        fits: true
        color: tyre.tempKnown ? Theme.ink : Theme.faint
        font.pixelSize: 26
        font.bold: true
        text: tyre.tempKnown ? tyre.figure(tyre.temp) + "°" : "–"
    }

    Sparkline {
        x: 82
        y: 2
        width: parent.width - x
        height: 22
        visible: tyre.tempKnown
        samples: trend.samples
        capacity: trend.capacity
        low: tyre.coldBelow
        high: tyre.hotAbove
    }

    // How much it rises or falls, once that is worth showing.
    Item {
        id: arrow

        x: 58
        width: 22
        height: 26
        visible: trend.settled && tyre.step > 0

        Label {
            width: parent.width
            height: 13
            y: trend.change > 0 ? 0 : 13
            color: Theme.ink
            font.pixelSize: 10
            text: trend.change > 0 ? "▲" : "▼"
        }

        Label {
            width: parent.width
            height: 13
            y: trend.change > 0 ? 13 : 0
            fits: true
            color: Theme.ink
            font.pixelSize: 13
            font.bold: true
            text: tyre.step
        }
    }

    Label {
        x: 8
        y: 26
        width: 20
        height: 14
        horizontalAlignment: Text.AlignLeft
        font.pixelSize: 12
        font.bold: true
        text: tyre.name
    }

    Label {
        x: 30
        y: 26
        width: 52
        height: 14
        horizontalAlignment: Text.AlignLeft
        visible: tyre.pressureKnown
        fits: true
        font.pixelSize: 12
        text: tyre.figure(tyre.pressure) + " kPa"
    }

    Label {
        x: 82
        y: 26
        width: parent.width - x
        height: 14
        horizontalAlignment: Text.AlignRight
        visible: tyre.wearKnown
        fits: true
        font.pixelSize: 12
        text: "worn " + tyre.wear + "%"
    }
}
