import QtQuick 2.15
import "Gauges"
import "Gauges/Theme.js" as Theme

Rectangle {
    id: formula

    readonly property real signedSpeed: dash_useMph ? dash_speed_mph : dash_speed_kmh
    // Converted to real first: Math.abs is wrong for the smallest int.
    readonly property real speed: Math.abs(signedSpeed)
    readonly property bool standing: speed < 3
    readonly property bool knowsRaceLength: dash_numberOfLaps_Available && dash_numberOfLaps > 0
    // Without a best lap there is nothing to compare the current lap with.
    readonly property bool hasDelta: dash_currentTime_ms_Available && dash_bestTime_ms_Available
        && dash_bestTime_ms > 0
    readonly property bool beatsBest: dash_lastTime_ms_Available && dash_bestTime_ms_Available
        && dash_lastTime_ms > 0 && dash_lastTime_ms <= dash_bestTime_ms
    readonly property bool lowFuel: dash_fuelLevel_Percent_Available
        && dash_fuelLevel_Percent <= dash_lowFuelLevelThreshold_Percent
    readonly property bool redline: dash_rpmRedThreshold_Percent > 0
        && dash_rpmPercent * 100 >= dash_rpmRedThreshold_Percent

    function gForce(value) {
        return Math.abs(value) < 100 ? Math.abs(value).toFixed(1) : "–"
    }

    width: 480
    height: 272
    color: Theme.night

    // The first lamp lights at the first threshold; nobody shifts below it.
    RpmStrip {
        id: shiftLights

        x: 12
        y: 4
        width: 456
        height: 16
        lamps: 15
        gap: 15.4
        corner: 8
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

    Cell {
        id: position

        x: 6
        y: 26
        width: 58
        tone: Theme.timing
        caption: "POS"
        known: dash_position_Available && dash_position > 0 && dash_position < 1000
        text: dash_position
    }

    Cell {
        id: lap

        x: 66
        y: 26
        width: 84
        tone: Theme.timing
        caption: "LAP"
        known: dash_completedLaps_Available
        unit: formula.knowsRaceLength && dash_numberOfLaps < 1000 ? "/" + dash_numberOfLaps_str : ""
        // The current lap; after the race, still the last one.
        text: formula.knowsRaceLength ? Math.min(dash_completedLaps + 1, dash_numberOfLaps)
                                      : dash_completedLaps + 1
    }

    Cell {
        id: currentTime

        x: 6
        y: 68
        tone: Theme.timing
        caption: "TIME"
        known: dash_currentTime_str_Available
        text: dash_currentTime_str
    }

    Cell {
        id: lastTime

        x: 6
        y: 110
        tone: Theme.timing
        caption: "LAST"
        valueColor: formula.beatsBest ? Theme.bestLap : Theme.ink
        known: dash_lastTime_str_Available
        text: dash_lastTime_str
    }

    Cell {
        id: bestTime

        x: 6
        y: 152
        tone: Theme.timing
        caption: "BEST"
        valueColor: Theme.bestLap
        known: dash_bestTime_str_Available
        text: dash_bestTime_str
    }

    Cell {
        id: deltaCell

        x: 6
        y: 194
        tone: Theme.timing
        caption: "DELTA"
        known: formula.hasDelta

        DeltaTime {
            x: 5
            y: 12
            width: parent.width - 10
            height: 28
            horizontalAlignment: Text.AlignRight
            font.pixelSize: 25
            known: formula.hasDelta
            seconds: dash_deltaTime_s
            digits: dash_deltaTime_str
        }
    }

    Rectangle {
        id: drs

        // Setting a border's colour repaints it even if it is the same, so this sets it only on a change.
        readonly property color rim: dash_drsAvailable || dash_drsEngaged ? Theme.good : Theme.faceTop

        x: 152
        y: 26
        width: 176
        height: 24
        color: dash_drsEngaged ? Theme.good : Theme.faceTop
        border.width: 2
        border.color: rim

        Label {
            anchors.fill: parent
            color: dash_drsEngaged ? Theme.inkOnBright : dash_drsAvailable ? Theme.good : Theme.faint
            font.pixelSize: 16
            font.bold: true
            text: dash_drsEngaged ? "DRS OPEN" : dash_drsAvailable ? "DRS READY" : "DRS"
        }
    }

    Rectangle {
        id: gear

        x: 152
        y: 52
        width: 176
        height: 140
        color: dash_rpmBlink ? Theme.flash : Theme.faceTop

        Label {
            x: 34
            width: 108
            height: parent.height
            fits: true
            color: dash_gear < 0 ? Theme.caution
                : formula.redline && !dash_rpmBlink ? Theme.danger : Theme.ink
            font.pixelSize: 136
            font.bold: true
            text: dash_gear_str
        }

        Label {
            x: 34
            y: parent.height - 14
            width: 108
            height: 12
            visible: dash_autoShifter
            font.bold: true
            text: "AUTO"
        }

        PedalBar {
            x: 5
            y: 6
            height: 130
            barWidth: 8
            visible: dash_clutchPedal_Percent_Available
            label: "C"
            percent: dash_clutchPedal_Percent
            color: Theme.accent
        }

        PedalBar {
            x: 19
            y: 6
            height: 130
            barWidth: 8
            visible: dash_brakePedal_Percent_Available
            label: "B"
            percent: dash_brakePedal_Percent
            color: Theme.danger
        }

        PedalBar {
            x: parent.width - width - 5
            y: 6
            height: 130
            barWidth: 12
            visible: dash_gasPedal_Percent_Available
            label: "T"
            percent: dash_gasPedal_Percent
            color: Theme.good
        }
    }

    Cell {
        id: speedCell

        x: 152
        y: 194
        width: 176
        flat: true
        caption: dash_speedLimiter_Available ? "LIM" : ""
        tone: Theme.faint
        valueSize: 36
        unit: dash_useMph ? "mph" : "km/h"
        known: formula.speed <= 999
        text: formula.speed
    }

    WheelPage {
        id: wheels

        x: 330
        y: 26
        standing: formula.standing
    }

    SetupPage {
        id: setup

        x: 330
        y: 26
    }

    Cell {
        id: fuel

        x: 330
        y: 194
        caption: formula.lowFuel ? "FUEL LOW" : "FUEL"
        tone: formula.lowFuel ? Theme.danger : Theme.muted
        known: dash_fuelLevel_Percent_Available
        unit: "%"
        text: dash_fuelLevel_Percent

        Bar {
            x: 5
            y: 22
            width: 66
            height: 10
            corner: 0
            visible: dash_fuelLevel_Percent_Available
            value: dash_fuelLevel_Percent / 100
            barColor: formula.lowFuel ? Theme.danger : Theme.good
        }
    }

    Row {
        id: foot

        x: 6
        y: 240
        spacing: 2

        Cell {
            width: 76
            height: 30
            flat: true
            tone: Theme.settings
            caption: "TC"
            known: dash_tractionControl_Level_Available
            text: dash_tractionControl_Level
            watched: dash_tcInAction_Available
            acting: dash_tcInAction
        }

        Cell {
            width: 76
            height: 30
            flat: true
            tone: Theme.settings
            caption: "ABS"
            known: dash_abs_Level_Available
            text: dash_abs_Level
            watched: dash_absInAction_Available
            acting: dash_absInAction
        }

        Cell {
            width: 80
            height: 30
            flat: true
            valueSize: 22
            tone: Theme.settings
            caption: "BIAS"
            known: dash_brakeBias_Percent_Available
            text: dash_brakeBias_Percent
        }

        Cell {
            width: 84
            height: 30
            flat: true
            valueSize: 22
            caption: "LOAD"
            known: dash_engineLoad_Percent_Available
            text: dash_engineLoad_Percent
        }

        Cell {
            width: 71
            height: 30
            flat: true
            valueSize: 20
            tone: Theme.forces
            caption: "LAT"
            text: formula.gForce(dash_swayG)
        }

        Cell {
            width: 71
            height: 30
            flat: true
            valueSize: 20
            tone: Theme.forces
            caption: "LON"
            text: formula.gForce(dash_surgeG)
        }
    }

    LimiterScreen {
        id: limiter

        anchors.fill: parent
        visible: dash_speedLimiter_Available && dash_speedLimiter
        speed: formula.speed
    }

    // Above the limiter screen: flags are out in the pit lane too.
    FlagCloths {
        id: flags

        y: 236
        width: parent.width
        height: 36
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
