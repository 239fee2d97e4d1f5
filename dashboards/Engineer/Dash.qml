import QtQuick 2.15
import "Gauges"
import "Gauges/Numbers.js" as Numbers
import "Gauges/Theme.js" as Theme

// The recorder runs on track; at a standstill the set-up page replaces it.
Rectangle {
    id: engineer

    // Converted to real first: Math.abs is wrong for the smallest int.
    readonly property real signedSpeed: dash_useMph ? dash_speed_mph : dash_speed_kmh
    readonly property real speed: Math.abs(signedSpeed)
    readonly property bool moving: speed > 2
    // Without a best lap there is nothing to compare the current lap with.
    readonly property bool hasDelta: dash_currentTime_str_Available && dash_bestTime_ms_Available
        && dash_bestTime_ms > 0

    function fixed(value, decimals) {
        return Math.abs(value) < 100000 ? Numbers.fixed(value, decimals) : "–"
    }

    width: 480
    height: 272
    color: Theme.paper

    Label {
        id: gear

        x: 4
        y: 2
        width: 24
        height: 22
        fits: true
        color: Theme.accent
        font.pixelSize: 22
        font.bold: true
        text: dash_gear_str
    }

    Label {
        id: speedNumber

        x: 30
        y: 2
        width: 42
        height: 22
        horizontalAlignment: Text.AlignRight
        fits: true
        color: Theme.ink
        font.pixelSize: 22
        font.bold: true
        text: engineer.speed > 9999 ? "–" : engineer.speed
    }

    Label {
        x: 75
        y: 9
        font.pixelSize: 11
        text: dash_useMph ? "mph" : "km/h"
    }

    RevScale {
        id: revs

        x: 106
        y: 5
        width: 208
        share: dash_rpmPercent
        thresholds: [dash_rpmGreenThreshold_Percent, dash_rpmYellowThreshold_Percent,
                     dash_rpmRedThreshold_Percent, dash_rpmBlinkingThreshold_Percent]
        colors: [Theme.good, Theme.caution, Theme.danger, Theme.flash]
        flash: dash_rpmBlink
    }

    Label {
        id: rpm

        x: 318
        y: 3
        width: 44
        height: 18
        horizontalAlignment: Text.AlignRight
        fits: true
        color: Theme.ink
        font.pixelSize: 18
        font.bold: true
        text: dash_rpm
    }

    Label {
        x: 364
        y: 9
        visible: !flags.visible
        font.pixelSize: 11
        text: "rpm"
    }

    FlagBand {
        id: flags

        x: 366
        y: 3
        width: 110
        height: 19
        visible: count > 0
        yellow: dash_sessionFlagYellow
        blue: dash_sessionFlagBlue
        black: dash_sessionFlagBlack
        blackAndWhite: dash_sessionFlagBlackAndWhite
    }

    TrackPage {
        id: track

        x: 4
        y: 27
        width: 312
        height: 160
        visible: engineer.moving
    }

    BoxPage {
        id: box

        x: 4
        y: 27
        width: 312
        height: 160
        visible: !engineer.moving
    }

    CornerTable {
        id: corners

        x: 322
        y: 27
        width: 154
        height: 160
    }

    LapTable {
        id: laps

        x: 4
        y: 191
        width: 146
        hasDelta: engineer.hasDelta
    }

    SpeedTable {
        id: speeds

        x: 156
        y: 191
        width: 116
    }

    AidTable {
        id: aids

        x: 278
        y: 191
        width: 92
    }

    Column {
        id: stores

        x: 378
        y: 191
        width: 98

        Cell {
            width: parent.width
            label: "FUEL"
            known: dash_fuelLevel_Percent_Available
            lit: dash_fuelLevel_Percent <= dash_lowFuelLevelThreshold_Percent
            text: dash_fuelLevel_Percent + " %"
        }

        Cell {
            width: parent.width
            label: "LOW BELOW"
            text: dash_lowFuelLevelThreshold_Percent + " %"
        }

        Cell {
            width: parent.width
            label: "LOAD"
            known: dash_engineLoad_Percent_Available
            text: dash_engineLoad_Percent + " %"
        }

        Cell {
            width: parent.width
            label: "REVS"
            text: engineer.fixed(dash_rpmPercent * 100, 1) + " %"
        }

        Cell {
            width: parent.width
            label: "REV LIMIT"
            known: dash_maxRpm < 1000000
            text: dash_maxRpm
        }

        Cell {
            width: parent.width
            label: "POSITION"
            known: dash_position_Available
            text: dash_position
        }
    }

    // On the chart, where the badge covers no text.
    Item {
        id: pausePlace

        x: 192
        y: 51
        width: 64
        height: 74
    }

    PauseVeil {
        shown: dash_paused
        badge: engineer.moving ? pausePlace : null
    }

    Markers {
        shown: dash_showMarkers
    }
}
