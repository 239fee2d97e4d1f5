import QtQuick 2.15
import "Gauges"
import "Gauges/Theme.js" as Theme

Rectangle {
    id: road

    // Converted to real first: Math.abs is wrong for the smallest int.
    readonly property real signedSpeed: dash_useMph ? dash_speed_mph : dash_speed_kmh
    readonly property real speed: Math.abs(signedSpeed)
    readonly property bool knowsRaceLength: dash_numberOfLaps_Available && dash_numberOfLaps > 0
    // Without a best lap there is nothing to compare the current lap with.
    readonly property bool hasDelta: dash_currentTime_str_Available && dash_bestTime_ms_Available
        && dash_bestTime_ms > 0

    width: 480
    height: 272
    gradient: Gradient {
        GradientStop { position: 0.0; color: Theme.metalDark }
        GradientStop { position: 0.5; color: "#0a0c0f" }
        GradientStop { position: 1.0; color: Theme.night }
    }

    Row {
        id: aids

        x: 8
        y: 6
        spacing: 5

        Lamp {
            opacity: dash_absInAction_Available ? 1 : 0
            text: "ABS"
            lit: dash_absInAction
        }

        Lamp {
            opacity: dash_tcInAction_Available ? 1 : 0
            text: "TC"
            lit: dash_tcInAction
        }
    }

    FlagBand {
        id: flags

        x: 98
        y: 6
        width: 284
        height: 22
        yellow: dash_sessionFlagYellow
        blue: dash_sessionFlagBlue
        black: dash_sessionFlagBlack
        blackAndWhite: dash_sessionFlagBlackAndWhite
    }

    Row {
        id: modes

        x: road.width - width - 8
        y: 6
        spacing: 5

        Lamp {
            opacity: dash_drsAvailable || dash_drsEngaged ? 1 : 0
            text: "DRS"
            lit: dash_drsEngaged
            litColor: Theme.good
            armed: dash_drsAvailable
        }

        Lamp {
            opacity: dash_speedLimiter_Available ? 1 : 0
            text: "LIM"
            lit: dash_speedLimiter
            litColor: Theme.ink
        }
    }

    Dial {
        id: speedDial

        x: 4
        y: 33
        width: 204
        value: road.speed
        majorStep: dash_useMph ? 20 : 40
        majorCount: dash_useMph ? 10 : 8
        minorPerMajor: dash_useMph ? 2 : 4
    }

    Label {
        id: speedNumber

        anchors.horizontalCenter: speedDial.horizontalCenter
        y: speedDial.y + 125
        width: 80
        height: 42
        color: Theme.ink
        font.pixelSize: 38
        font.bold: true
        text: road.speed > 999 ? "–" : road.speed
    }

    Label {
        anchors.horizontalCenter: speedDial.horizontalCenter
        y: speedDial.y + 164
        font.pixelSize: 13
        text: dash_useMph ? "mph" : "km/h"
    }

    RpmDial {
        id: rpmDial

        x: 272
        y: 33
        width: 204
        rpm: dash_rpm
        maxRpm: dash_maxRpm
        yellow: dash_rpmYellowThreshold_Percent
        red: dash_rpmRedThreshold_Percent
    }

    FuelGauge {
        id: fuel

        anchors.horizontalCenter: rpmDial.horizontalCenter
        y: rpmDial.y + 129
        visible: dash_fuelLevel_Percent_Available
        percent: dash_fuelLevel_Percent
        low: dash_fuelLevel_Percent <= dash_lowFuelLevelThreshold_Percent
    }

    Label {
        id: currentTime

        anchors.horizontalCenter: parent.horizontalCenter
        y: 38
        width: 110
        height: 24
        visible: dash_currentTime_str_Available
        color: Theme.ink
        fits: true
        font.pixelSize: 23
        font.bold: true
        text: dash_currentTime_str
    }

    DeltaTime {
        id: delta

        anchors.horizontalCenter: parent.horizontalCenter
        y: 63
        known: road.hasDelta
        seconds: dash_deltaTime_s
        digits: dash_deltaTime_str
    }

    GearPlate {
        id: gearPlate

        anchors.horizontalCenter: parent.horizontalCenter
        y: 98
        text: dash_gear_str
        redline: rpmDial.redline
        flash: dash_rpmBlink
    }

    Label {
        id: position

        x: 188
        y: 190
        width: 48
        height: 36
        visible: dash_position_Available && dash_position > 0 && dash_position < 1000
        color: Theme.ink
        fits: true
        font.pixelSize: 26
        font.bold: true
        text: "P" + dash_position
    }

    Row {
        id: pedals

        x: 245
        y: 190
        spacing: 3
        visible: dash_gasPedal_Percent_Available

        PedalBar {
            label: "C"
            percent: dash_clutchPedal_Percent
            color: Theme.muted
        }

        PedalBar {
            label: "B"
            percent: dash_brakePedal_Percent
            color: Theme.danger
        }

        PedalBar {
            label: "T"
            percent: dash_gasPedal_Percent
            color: Theme.good
        }
    }

    LapTime {
        id: lastLap

        x: 10
        y: 232
        width: 140
        visible: dash_lastTime_str_Available
        label: "LAST"
        time: dash_lastTime_str
    }

    Item {
        id: laps

        x: 176
        y: 240
        width: 128
        height: odometer.height
        visible: dash_completedLaps_Available

        Label {
            anchors.right: odometer.left
            anchors.rightMargin: 7
            anchors.verticalCenter: parent.verticalCenter
            text: "LAP"
        }

        Odometer {
            id: odometer

            anchors.centerIn: parent
            // The current lap; after the race, still the last one.
            value: road.knowsRaceLength ? Math.min(dash_completedLaps + 1, dash_numberOfLaps)
                                        : dash_completedLaps + 1
        }

        Label {
            anchors.left: odometer.right
            anchors.leftMargin: 7
            anchors.verticalCenter: parent.verticalCenter
            visible: road.knowsRaceLength && dash_numberOfLaps < 1000
            font.pixelSize: 16
            text: "/ " + dash_numberOfLaps_str
        }
    }

    LapTime {
        id: bestLap

        x: road.width - width - 10
        y: 232
        width: 140
        mirrored: true
        visible: dash_bestTime_str_Available
        label: "BEST"
        time: dash_bestTime_str
    }

    PauseVeil {
        shown: dash_paused
        badge: gearPlate
    }

    Markers {
        shown: dash_showMarkers
    }
}
