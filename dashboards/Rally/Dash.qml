import QtQuick 2.15
import "Gauges"
import "Gauges/Theme.js" as Theme

// Readable in a tenth of a second on a rough stage: the gear in the middle, shift lamps above it,
// times below, and nothing that has to be searched for.
Rectangle {
    id: rally

    // Converted to real first: Math.abs is wrong for the smallest int.
    readonly property real signedSpeed: dash_useMph ? dash_speed_mph : dash_speed_kmh
    readonly property real speed: Math.abs(signedSpeed)
    // Without a best time there is nothing to compare the current stage with.
    readonly property bool hasDelta: dash_currentTime_str_Available && dash_bestTime_ms_Available
        && dash_bestTime_ms > 0
    // Shaken eyes read no more than a tenth.
    readonly property real deltaTenths: Math.round(dash_deltaTime_s * 10) / 10
    readonly property bool flagged: dash_sessionFlagYellow || dash_sessionFlagBlue
        || dash_sessionFlagBlack || dash_sessionFlagBlackAndWhite
    readonly property bool showsDelta: hasDelta && !flagged && !isNaN(dash_deltaTime_s)
    readonly property real steeringRange: 360

    width: 480
    height: 272
    color: Theme.night

    RpmStrip {
        id: shiftLamps

        x: 8
        y: 8
        width: 464
        height: 42
        lamps: 12
        gap: 6
        corner: 3
        shape: true
        // The lower half of the range says nothing about when to shift.
        from: 0.4
        rpm: dash_rpm
        maxRpm: dash_maxRpm
        green: dash_rpmGreenThreshold_Percent
        yellow: dash_rpmYellowThreshold_Percent
        red: dash_rpmRedThreshold_Percent
        blinking: dash_rpmBlinkingThreshold_Percent
        flash: dash_rpmBlink
    }

    HugeText {
        id: speedNumber

        x: 8
        y: 58
        width: 150
        height: 92
        horizontalAlignment: Text.AlignRight
        color: Theme.ink
        font.pixelSize: 122
        text: rally.speed > 999 ? "–" : rally.speed
    }

    HugeText {
        id: position

        x: 8
        y: 156
        width: 92
        height: 40
        horizontalAlignment: Text.AlignLeft
        visible: dash_position_Available && dash_position > 0 && dash_position < 1000
        color: Theme.accent
        font.pixelSize: 54
        text: "P" + dash_position
    }

    HugeText {
        id: speedUnit

        x: 104
        y: 154
        width: 54
        height: 26
        horizontalAlignment: Text.AlignRight
        color: Theme.muted
        font.pixelSize: 26
        text: dash_useMph ? "MPH" : "KM/H"
    }

    Rectangle {
        id: gearField

        x: 168
        y: 58
        width: 144
        height: 138
        radius: 8
        antialiasing: true
        color: dash_rpmBlink ? Theme.flash : Theme.faceTop

        HugeText {
            anchors.fill: parent
            anchors.leftMargin: 4
            anchors.rightMargin: 4
            color: dash_rpmBlink ? Theme.inkOnBright : Theme.ink
            font.pixelSize: 180
            text: dash_gear_str
        }
    }

    Row {
        id: pedals

        x: 322
        y: 58
        spacing: 12
        visible: dash_gasPedal_Percent_Available

        PedalBar {
            width: 42
            height: 138
            barWidth: 42
            labelSize: 26
            label: "C"
            percent: dash_clutchPedal_Percent
            color: Theme.muted
        }

        PedalBar {
            width: 42
            height: 138
            barWidth: 42
            labelSize: 26
            label: "B"
            percent: dash_brakePedal_Percent
            color: Theme.danger
        }

        PedalBar {
            width: 42
            height: 138
            barWidth: 42
            labelSize: 26
            label: "T"
            percent: dash_gasPedal_Percent
            color: Theme.good
        }
    }

    // Where the wheels point, easily forgotten in a slide.
    Bar {
        id: steering

        x: 8
        y: 201
        width: 464
        height: 10
        corner: 0
        origin: 0.5
        value: 0.5 + dash_angle / (2 * rally.steeringRange)
        barColor: Theme.accent

        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 4
            height: parent.height
            color: Theme.ink
        }
    }

    Rectangle {
        id: stageTime

        x: 8
        y: 216
        width: 220
        height: 50
        radius: 4
        antialiasing: true
        color: dash_currentTime_str_Available ? Theme.accent : Theme.faceTop

        HugeText {
            anchors.fill: parent
            anchors.leftMargin: 6
            anchors.rightMargin: 6
            color: dash_currentTime_str_Available ? Theme.inkOnBright : Theme.faint
            font.pixelSize: 60
            text: dash_currentTime_str_Available ? dash_currentTime_str : "–"
        }
    }

    Rectangle {
        id: deltaField

        x: 234
        y: 216
        width: 118
        height: 50
        radius: 4
        antialiasing: true
        visible: rally.showsDelta
        color: rally.deltaTenths > 0 ? Theme.danger
            : rally.deltaTenths < 0 ? Theme.good : Theme.muted

        HugeText {
            anchors.fill: parent
            anchors.leftMargin: 6
            anchors.rightMargin: 6
            color: Theme.inkOnBright
            font.pixelSize: 60
            text: !rally.showsDelta ? ""
                : (rally.deltaTenths > 0 ? "+" : rally.deltaTenths < 0 ? "−" : "")
                  + Math.abs(rally.deltaTenths).toFixed(1)
        }
    }

    LapTime {
        id: bestTime

        x: 362
        y: 216
        width: 110
        height: 50
        mirrored: true
        visible: dash_bestTime_str_Available && !rally.flagged
        label: "BEST"
        time: dash_bestTime_str
        timeSize: 34
    }

    // Nobody races the best time under a flag, so the flag takes its place.
    FlagBand {
        id: flags

        x: 234
        y: 216
        width: 140
        height: 29.4
        scale: 1.7
        transformOrigin: Item.TopLeft
        yellow: dash_sessionFlagYellow
        blue: dash_sessionFlagBlue
        black: dash_sessionFlagBlack
        blackAndWhite: dash_sessionFlagBlackAndWhite
    }

    PauseVeil {
        shown: dash_paused
        badge: gearField
    }

    Markers {
        shown: dash_showMarkers
    }
}
