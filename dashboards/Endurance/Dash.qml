import QtQuick 2.15
import "Gauges"
import "Gauges/Theme.js" as Theme

Rectangle {
    id: endurance

    readonly property int margin: 12
    readonly property real signedSpeed: dash_useMph ? dash_speed_mph : dash_speed_kmh
    // Converted to real first: Math.abs is wrong for the smallest int.
    readonly property real speed: Math.abs(signedSpeed)
    readonly property bool knowsRaceLength: dash_numberOfLaps_Available && dash_numberOfLaps > 0
    // Without a best lap there is nothing to compare the current lap with.
    readonly property bool hasDelta: dash_currentTime_str_Available && dash_bestTime_ms_Available
        && dash_bestTime_ms > 0
    readonly property bool lowFuel: dash_fuelLevel_Percent_Available
        && dash_fuelLevel_Percent <= dash_lowFuelLevelThreshold_Percent

    width: 480
    height: 272
    color: Theme.night

    Stint {
        id: stint

        laps: dash_completedLaps
        lapsKnown: dash_completedLaps_Available
        fuel: dash_fuelLevel_Percent
        fuelKnown: dash_fuelLevel_Percent_Available
        lastTime: dash_lastTime_ms_Available && dash_lastTime_ms > 0 ? dash_lastTime_str : ""
        publication: dash_frameCounter1000
    }

    RpmStrip {
        id: rpm

        width: 480
        height: 6
        lamps: 48
        gap: 1
        corner: 0
        restColor: Theme.bezelBright
        rpm: dash_rpm
        maxRpm: dash_maxRpm
        green: dash_rpmGreenThreshold_Percent
        yellow: dash_rpmYellowThreshold_Percent
        red: dash_rpmRedThreshold_Percent
        blinking: dash_rpmBlinkingThreshold_Percent
        flash: dash_rpmBlink
    }

    Readout {
        id: fuel

        x: endurance.margin
        y: 14
        width: 112
        height: 86
        caption: endurance.lowFuel ? "FUEL LOW" : "FUEL"
        captionSize: 13
        valueSize: 74
        valueColor: endurance.lowFuel ? Theme.danger : Theme.ink
        unitSize: 20
        unit: "%"
        available: dash_fuelLevel_Percent_Available
        text: dash_fuelLevel_Percent
    }

    FuelPlan {
        id: fuelPlan

        x: 132
        y: 15
        visible: dash_fuelLevel_Percent_Available && dash_completedLaps_Available
        perLap: stint.perLap
        lapsLeft: stint.lapsLeft
        boxLap: stint.boxLap
    }

    Rectangle {
        id: gear

        x: 204
        y: 16
        width: 56
        height: 62
        color: Theme.night

        Label {
            anchors.fill: parent
            fits: true
            color: dash_rpmBlink ? Theme.danger : Theme.ink
            font.pixelSize: 74
            font.bold: true
            text: dash_gear_str
        }
    }

    Column {
        id: lamps

        x: 264
        y: 19
        spacing: 3

        Lamp {
            width: 34
            height: 18
            opacity: dash_speedLimiter_Available ? 1 : 0
            textSize: 12
            text: "LIM"
            lit: dash_speedLimiter
        }

        Lamp {
            width: 34
            height: 18
            opacity: dash_tcInAction_Available ? 1 : 0
            textSize: 12
            text: "TC"
            lit: dash_tcInAction
        }

        Lamp {
            width: 34
            height: 18
            opacity: dash_absInAction_Available ? 1 : 0
            textSize: 12
            text: "ABS"
            lit: dash_absInAction
        }
    }

    Readout {
        id: speed

        x: 204
        y: 80
        width: 94
        height: 24
        align: Text.AlignRight
        valueSize: 26
        unitSize: 13
        unit: dash_useMph ? "mph" : "km/h"
        available: endurance.speed <= 999
        text: endurance.speed
    }

    Readout {
        id: position

        x: 316
        y: 14
        width: 76
        height: 86
        caption: "POSITION"
        captionSize: 13
        valueSize: 60
        available: dash_position_Available && dash_position > 0 && dash_position < 1000
        text: "P" + dash_position
    }

    Readout {
        id: lap

        x: 396
        y: 14
        width: 72
        height: 46
        align: Text.AlignRight
        caption: "LAP"
        captionSize: 13
        valueSize: 30
        unitSize: 14
        unit: endurance.knowsRaceLength && dash_numberOfLaps < 1000 ? "/" + dash_numberOfLaps_str : ""
        available: dash_completedLaps_Available
        // The current lap; after the race, still the last one.
        text: endurance.knowsRaceLength ? Math.min(dash_completedLaps + 1, dash_numberOfLaps)
                                        : dash_completedLaps + 1
    }

    Readout {
        id: toGo

        x: 396
        y: 64
        width: 72
        height: 36
        align: Text.AlignRight
        caption: "TO GO"
        valueSize: 22
        available: endurance.knowsRaceLength && dash_completedLaps_Available
            && dash_numberOfLaps >= dash_completedLaps
        text: dash_numberOfLaps - dash_completedLaps
    }

    Rectangle {
        id: upperRule

        x: endurance.margin
        y: 109
        width: 456
        height: 1
        antialiasing: true
        color: Theme.metal
    }

    TyreTrend {
        id: frontLeft

        x: endurance.margin
        y: 116
        name: "FL"
        temp: dash_tyreTemp_C_FL
        tempKnown: dash_tyreTemp_C_FL_Available
        pressure: dash_tyrePressure_kPa_FL
        pressureKnown: dash_tyrePressure_kPa_FL_Available
        wear: dash_tyreWear_Percent_FL
        wearKnown: dash_tyreWear_Percent_FL_Available
        slipping: dash_wheelSlip_FL
        publication: dash_frameCounter1000
        resting: dash_paused
    }

    TyreTrend {
        id: frontRight

        x: 166
        y: 116
        name: "FR"
        temp: dash_tyreTemp_C_FR
        tempKnown: dash_tyreTemp_C_FR_Available
        pressure: dash_tyrePressure_kPa_FR
        pressureKnown: dash_tyrePressure_kPa_FR_Available
        wear: dash_tyreWear_Percent_FR
        wearKnown: dash_tyreWear_Percent_FR_Available
        slipping: dash_wheelSlip_FR
        publication: dash_frameCounter1000
        resting: dash_paused
    }

    TyreTrend {
        id: rearLeft

        x: endurance.margin
        y: 162
        name: "RL"
        temp: dash_tyreTemp_C_RL
        tempKnown: dash_tyreTemp_C_RL_Available
        pressure: dash_tyrePressure_kPa_RL
        pressureKnown: dash_tyrePressure_kPa_RL_Available
        wear: dash_tyreWear_Percent_RL
        wearKnown: dash_tyreWear_Percent_RL_Available
        slipping: dash_wheelSlip_RL
        publication: dash_frameCounter1000
        resting: dash_paused
    }

    TyreTrend {
        id: rearRight

        x: 166
        y: 162
        name: "RR"
        temp: dash_tyreTemp_C_RR
        tempKnown: dash_tyreTemp_C_RR_Available
        pressure: dash_tyrePressure_kPa_RR
        pressureKnown: dash_tyrePressure_kPa_RR_Available
        wear: dash_tyreWear_Percent_RR
        wearKnown: dash_tyreWear_Percent_RR_Available
        slipping: dash_wheelSlip_RR
        publication: dash_frameCounter1000
        resting: dash_paused
    }

    StintTimes {
        id: stintTimes

        x: 326
        y: 114
        visible: dash_completedLaps_Available
        times: stint.times
        rows: stint.capacity
        best: dash_bestTime_str
    }

    Rectangle {
        id: lowerRule

        x: endurance.margin
        y: 207
        width: 456
        height: 1
        antialiasing: true
        color: Theme.metal
    }

    LapTime {
        id: currentTime

        x: endurance.margin
        y: 210
        width: 112
        timeSize: 22
        visible: dash_currentTime_str_Available
        label: "THIS LAP"
        time: dash_currentTime_str
    }

    LapTime {
        id: lastTime

        x: 132
        y: 210
        width: 104
        timeSize: 22
        visible: dash_lastTime_str_Available
        label: "LAST"
        time: dash_lastTime_str
    }

    LapTime {
        id: bestTime

        x: 246
        y: 210
        width: 104
        timeSize: 22
        visible: dash_bestTime_str_Available
        label: "BEST"
        time: dash_bestTime_str
        timeColor: Theme.good
    }

    DeltaTime {
        id: delta

        x: 360
        y: 214
        width: 108
        height: 30
        horizontalAlignment: Text.AlignRight
        font.pixelSize: 30
        known: endurance.hasDelta
        seconds: dash_deltaTime_s
        digits: dash_deltaTime_str
    }

    FuelBar {
        id: fuelBar

        x: endurance.margin
        y: 252
        height: 12
        visible: dash_fuelLevel_Percent_Available && flags.count === 0
        percent: dash_fuelLevel_Percent
        low: endurance.lowFuel
        threshold: dash_lowFuelLevelThreshold_Percent
        perLap: stint.perLap
    }

    // The number for the tank stays, so a flag may cover its bar.
    FlagBand {
        id: flags

        x: endurance.margin
        y: 247
        width: 456
        height: 22
        yellow: dash_sessionFlagYellow
        blue: dash_sessionFlagBlue
        black: dash_sessionFlagBlack
        blackAndWhite: dash_sessionFlagBlackAndWhite
    }

    PauseVeil {
        shown: dash_paused
        badge: gear
    }

    Markers {
        shown: dash_showMarkers
    }
}
