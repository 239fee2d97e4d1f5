import QtQuick 2.15
import "Gauges"
import "Gauges/Theme.js" as Theme

Rectangle {
    id: gt

    readonly property int margin: 8
    readonly property real signedSpeed: dash_useMph ? dash_speed_mph : dash_speed_kmh
    // Converted to real first: Math.abs is wrong for the smallest int.
    readonly property real speed: Math.abs(signedSpeed)
    readonly property bool knowsRaceLength: dash_numberOfLaps_Available && dash_numberOfLaps > 0
    // Without a best lap there is nothing to compare the current lap with.
    readonly property bool hasDelta: dash_currentTime_str_Available && dash_bestTime_ms_Available
        && dash_bestTime_ms > 0
    readonly property bool beatsBest: dash_lastTime_ms_Available && dash_bestTime_ms_Available
        && dash_lastTime_ms > 0 && dash_lastTime_ms <= dash_bestTime_ms
    readonly property bool lowFuel: dash_fuelLevel_Percent <= dash_lowFuelLevelThreshold_Percent

    width: 480
    height: 272
    color: Theme.night

    // The first lamp lights at the first threshold; nobody shifts below it.
    RpmStrip {
        id: shiftLights

        x: gt.margin
        y: 6
        width: 464
        height: 20
        lamps: 16
        gap: 5
        corner: 10
        restColor: Theme.accent
        from: dash_rpmGreenThreshold_Percent > 0 && dash_rpmGreenThreshold_Percent < 100
            ? (dash_rpmGreenThreshold_Percent / 100 * lamps - 1) / (lamps - 1) : 0
        rpm: dash_rpm
        maxRpm: dash_maxRpm
        green: dash_rpmGreenThreshold_Percent
        yellow: dash_rpmYellowThreshold_Percent
        red: dash_rpmRedThreshold_Percent
        blinking: dash_rpmBlinkingThreshold_Percent
        flash: dash_rpmBlink
    }

    DeltaBar {
        id: delta

        x: gt.margin
        y: 30
        visible: flags.count === 0
        known: gt.hasDelta
        seconds: dash_deltaTime_s
        digits: dash_deltaTime_str
    }

    // A flag matters more than the time.
    FlagBand {
        id: flags

        x: gt.margin
        y: 30
        width: 464
        height: 28
        yellow: dash_sessionFlagYellow
        blue: dash_sessionFlagBlue
        black: dash_sessionFlagBlack
        blackAndWhite: dash_sessionFlagBlackAndWhite
    }

    Readout {
        id: position

        x: gt.margin
        y: 62
        width: 66
        height: 48
        visible: dash_position_Available
        caption: "POS"
        valueSize: 36
        valueColor: Theme.accent
        available: dash_position > 0 && dash_position < 1000
        text: "P" + dash_position
    }

    Readout {
        id: lap

        x: 78
        y: 62
        width: 82
        height: 48
        visible: dash_completedLaps_Available
        align: Text.AlignRight
        caption: "LAP"
        valueSize: 36
        unitSize: 16
        unit: gt.knowsRaceLength && dash_numberOfLaps < 1000 ? "/" + dash_numberOfLaps_str : ""
        // The current lap; after the race, still the last one.
        text: gt.knowsRaceLength ? Math.min(dash_completedLaps + 1, dash_numberOfLaps)
                                 : dash_completedLaps + 1
    }

    Label {
        id: currentTime

        x: gt.margin
        y: 112
        width: 152
        height: 44
        visible: dash_currentTime_str_Available
        color: Theme.ink
        fits: true
        font.pixelSize: 38
        font.bold: true
        text: dash_currentTime_str
    }

    TimeRow {
        id: lastTime

        x: gt.margin
        y: 161
        visible: dash_lastTime_str_Available
        caption: "LAST"
        time: dash_lastTime_str
        tone: gt.beatsBest ? Theme.bestLap : Theme.ink
    }

    TimeRow {
        id: bestTime

        x: gt.margin
        y: 191
        visible: dash_bestTime_str_Available
        caption: "BEST"
        time: dash_bestTime_str
        tone: Theme.bestLap
    }

    PedalBar {
        id: brakePedal

        x: 170
        y: 66
        height: 152
        barWidth: 8
        visible: dash_brakePedal_Percent_Available
        label: "B"
        percent: dash_brakePedal_Percent
        color: Theme.danger
    }

    PedalBar {
        id: gasPedal

        x: 298
        y: 66
        height: 152
        barWidth: 8
        visible: dash_gasPedal_Percent_Available
        label: "T"
        percent: dash_gasPedal_Percent
        color: Theme.good
    }

    Rectangle {
        id: gear

        x: 188
        y: 66
        width: 104
        height: 112
        radius: 6
        antialiasing: true
        color: dash_rpmBlink ? Theme.flash : Theme.night

        Label {
            anchors.fill: parent
            fits: true
            color: Theme.ink
            font.pixelSize: 138
            font.bold: true
            text: dash_gear_str
        }
    }

    Label {
        id: speedNumber

        x: 188
        y: 180
        width: 68
        height: 40
        horizontalAlignment: Text.AlignRight
        color: Theme.ink
        font.pixelSize: 40
        font.bold: true
        text: gt.speed > 999 ? "–" : gt.speed
    }

    Label {
        id: speedUnit

        x: 260
        width: 32
        anchors.baseline: speedNumber.baseline
        horizontalAlignment: Text.AlignLeft
        font.pixelSize: 15
        text: dash_useMph ? "mph" : "km/h"
    }

    Item {
        id: tyres

        x: 314
        y: 64
        width: 160
        height: 154

        TyreCorner {
            width: 78
            height: 68
            mirrored: true
            temp: dash_tyreTemp_C_FL
            tempKnown: dash_tyreTemp_C_FL_Available
            pressure: dash_tyrePressure_kPa_FL
            pressureKnown: dash_tyrePressure_kPa_FL_Available
            brakeTemp: dash_brakeTemp_C_FL
            brakeTempKnown: dash_brakeTemp_C_FL_Available
            wear: dash_tyreWear_Percent_FL
            wearKnown: dash_tyreWear_Percent_FL_Available
            slipping: dash_wheelSlip_FL
        }

        TyreCorner {
            x: 82
            width: 78
            height: 68
            temp: dash_tyreTemp_C_FR
            tempKnown: dash_tyreTemp_C_FR_Available
            pressure: dash_tyrePressure_kPa_FR
            pressureKnown: dash_tyrePressure_kPa_FR_Available
            brakeTemp: dash_brakeTemp_C_FR
            brakeTempKnown: dash_brakeTemp_C_FR_Available
            wear: dash_tyreWear_Percent_FR
            wearKnown: dash_tyreWear_Percent_FR_Available
            slipping: dash_wheelSlip_FR
        }

        TyreCorner {
            y: 80
            width: 78
            height: 68
            mirrored: true
            temp: dash_tyreTemp_C_RL
            tempKnown: dash_tyreTemp_C_RL_Available
            pressure: dash_tyrePressure_kPa_RL
            pressureKnown: dash_tyrePressure_kPa_RL_Available
            brakeTemp: dash_brakeTemp_C_RL
            brakeTempKnown: dash_brakeTemp_C_RL_Available
            wear: dash_tyreWear_Percent_RL
            wearKnown: dash_tyreWear_Percent_RL_Available
            slipping: dash_wheelSlip_RL
        }

        TyreCorner {
            x: 82
            y: 80
            width: 78
            height: 68
            temp: dash_tyreTemp_C_RR
            tempKnown: dash_tyreTemp_C_RR_Available
            pressure: dash_tyrePressure_kPa_RR
            pressureKnown: dash_tyrePressure_kPa_RR_Available
            brakeTemp: dash_brakeTemp_C_RR
            brakeTempKnown: dash_brakeTemp_C_RR_Available
            wear: dash_tyreWear_Percent_RR
            wearKnown: dash_tyreWear_Percent_RR_Available
            slipping: dash_wheelSlip_RR
        }
    }

    Row {
        id: settings

        x: gt.margin
        y: 228
        spacing: 6

        Tile {
            width: 78
            caption: "TC"
            tone: Theme.traction
            known: dash_tractionControl_Level_Available
            text: dash_tractionControl_Level
            watched: dash_tcInAction_Available
            acting: dash_tcInAction
        }

        Tile {
            width: 78
            caption: "ABS"
            tone: Theme.antilock
            known: dash_abs_Level_Available
            text: dash_abs_Level
            watched: dash_absInAction_Available
            acting: dash_absInAction
        }

        Tile {
            width: 96
            caption: "BIAS"
            tone: Theme.bias
            known: dash_brakeBias_Percent_Available
            text: dash_brakeBias_Percent + "%"
        }

        Tile {
            width: 104
            caption: gt.lowFuel && dash_fuelLevel_Percent_Available ? "LOW" : "FUEL"
            tone: gt.lowFuel && dash_fuelLevel_Percent_Available ? Theme.danger : Theme.ink
            known: dash_fuelLevel_Percent_Available
            text: dash_fuelLevel_Percent + "%"
        }

        Tile {
            width: 84
            visible: dash_speedLimiter_Available
            caption: dash_speedLimiter ? "LIMITER" : "PIT LIM"
            tone: Theme.limiter
            acting: dash_speedLimiter
        }
    }

    PauseVeil {
        shown: dash_paused
        badge: gear
    }

    Markers {
        shown: dash_showMarkers
    }
}
