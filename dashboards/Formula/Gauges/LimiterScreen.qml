import QtQuick 2.15
import "Theme.js" as Theme

// Replaces the page while the speed limiter is on: only the speed counts in the pit lane.
//   speed   in the driver's unit
Rectangle {
    id: screen

    property real speed: 0

    color: Theme.night

    HazardTape {
        width: parent.width
    }

    HazardTape {
        y: parent.height - height - 36
        width: parent.width
    }

    Label {
        y: 30
        width: parent.width
        height: 40
        color: Theme.yellow
        font.pixelSize: 34
        font.bold: true
        font.letterSpacing: 3
        text: "PIT LIMITER"
    }

    Label {
        x: 92
        y: 70
        width: 210
        height: 132
        horizontalAlignment: Text.AlignRight
        fits: true
        color: Theme.ink
        font.pixelSize: 118
        font.bold: true
        text: screen.speed > 999 ? "–" : screen.speed
    }

    Label {
        x: 312
        y: 156
        width: 60
        horizontalAlignment: Text.AlignLeft
        font.pixelSize: 24
        text: dash_useMph ? "mph" : "km/h"
    }

    Label {
        x: 312
        y: 82
        width: 60
        height: 60
        fits: true
        horizontalAlignment: Text.AlignLeft
        color: Theme.accent
        font.pixelSize: 56
        font.bold: true
        text: dash_gear_str
    }

    Cell {
        x: 6
        y: parent.height - 32
        width: 154
        height: 30
        flat: true
        caption: "FUEL"
        valueSize: 20
        known: dash_fuelLevel_Percent_Available
        unit: "%"
        text: dash_fuelLevel_Percent
    }

    Cell {
        x: 163
        y: parent.height - 32
        width: 154
        height: 30
        flat: true
        caption: "POS"
        tone: Theme.timing
        valueSize: 20
        known: dash_position_Available && dash_position > 0 && dash_position < 1000
        text: dash_position
    }

    Cell {
        x: 320
        y: parent.height - 32
        width: 154
        height: 30
        flat: true
        caption: "LAST"
        tone: Theme.timing
        valueSize: 20
        known: dash_lastTime_str_Available
        text: dash_lastTime_str
    }
}
