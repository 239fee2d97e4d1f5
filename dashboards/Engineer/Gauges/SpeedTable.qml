import QtQuick 2.15
import "Theme.js" as Theme

// Speed in every unit, and the gear as text and as a number.
// Without a sensor there is no value.
Column {
    id: table

    function sane(speed) {
        return speed > -10000 && speed < 10000
    }

    TableLine {
        width: table.width
        heading: true
        label: "SPEED"
        texts: ["km/h", "mph", "kn"]
    }

    TableLine {
        width: table.width
        label: "VEHICLE"
        texts: [dash_speed_kmh, dash_speed_mph, dash_speed_knots]
        known: texts.map(table.sane)
    }

    TableLine {
        width: table.width
        label: "GROUND"
        texts: [dash_groundSpeed_kmh, dash_groundSpeed_mph, dash_groundSpeed_knots]
        known: texts.map(table.sane)
    }

    Cell {
        width: table.width
        label: "GEAR"
        text: dash_gear
    }

    Cell {
        width: table.width
        label: "SHIFTER"
        text: dash_autoShifter ? "AUTO" : "MANUAL"
    }

    Cell {
        width: table.width
        label: "LIMITER"
        known: dash_speedLimiter_Available
        lit: dash_speedLimiter
        text: dash_speedLimiter ? "ON" : "OFF"
    }
}
