import QtQuick 2.15

Rectangle {
    id: road

    readonly property real speed: Math.abs(dash_useMph ? dash_speed_mph : dash_speed_kmh)
    // A limit out of this range says that the source knows none.
    readonly property bool knowsMaxRpm: dash_maxRpm > 500 && dash_maxRpm < 100000
    readonly property real rpmLimit: knowsMaxRpm ? dash_maxRpm : 10000
    // A slow engine's scale counts hundreds: few round thousands would tell little about it.
    readonly property real rpmStep: rpmLimit <= 1000 ? 100
        : rpmLimit < 2000 ? 200
        : rpmLimit <= 4000 ? 500 : 1000 * Math.ceil(rpmLimit / 10000)
    readonly property real rpmUnit: rpmStep < 1000 ? 100 : 1000
    readonly property bool redline: knowsMaxRpm && dash_rpmRedThreshold_Percent > 0
        && dash_rpm * 100 >= dash_maxRpm * dash_rpmRedThreshold_Percent
    readonly property bool knowsRaceLength: dash_numberOfLaps_Available && dash_numberOfLaps > 0
    // Without a best lap there is nothing that the lap under way could be compared with.
    readonly property bool hasDelta: dash_currentTime_str_Available && dash_bestTime_ms_Available
        && dash_bestTime_ms > 0 && !isNaN(dash_deltaTime_s)
    readonly property Theme theme: Theme {}

    width: 480
    height: 272
    gradient: Gradient {
        GradientStop { position: 0.0; color: road.theme.metalDark }
        GradientStop { position: 0.5; color: "#0a0c0f" }
        GradientStop { position: 1.0; color: road.theme.night }
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
            litColor: road.theme.good
            armed: dash_drsAvailable
        }

        Lamp {
            opacity: dash_speedLimiter_Available ? 1 : 0
            text: "LIM"
            lit: dash_speedLimiter
            litColor: road.theme.ink
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
        color: road.theme.ink
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

    Dial {
        id: rpmDial

        x: 272
        y: 33
        width: 204
        value: dash_rpm
        majorStep: road.rpmStep
        // The bound holds while one of the two already belongs to the next vehicle.
        majorCount: Math.min(10, Math.ceil(road.rpmLimit / road.rpmStep))
        minorPerMajor: road.rpmStep === 500 ? 5 : 4
        numeralUnit: road.rpmUnit
        numeralSize: 19
        cautionFrom: road.knowsMaxRpm ? road.rpmLimit * dash_rpmYellowThreshold_Percent / 100 : 0
        dangerFrom: road.knowsMaxRpm ? road.rpmLimit * dash_rpmRedThreshold_Percent / 100 : 0
    }

    Label {
        anchors.horizontalCenter: rpmDial.horizontalCenter
        y: rpmDial.y + 56
        text: "×" + road.rpmUnit + " r/min"
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
        color: road.theme.ink
        font.pixelSize: text.length > 9 ? 18 : 23
        font.bold: true
        text: dash_currentTime_str
    }

    Label {
        id: delta

        anchors.horizontalCenter: parent.horizontalCenter
        y: 63
        width: 90
        height: 22
        visible: road.hasDelta
        color: dash_deltaTime_s > 0 ? road.theme.danger : dash_deltaTime_s < 0 ? road.theme.good : road.theme.muted
        font.pixelSize: 19
        font.bold: true
        text: (dash_deltaTime_s > 0 ? "+" : "") + dash_deltaTime_str.replace("-", "−")
    }

    Rectangle {
        id: gearPlate

        anchors.horizontalCenter: parent.horizontalCenter
        y: 98
        width: 52
        height: 74
        radius: 8
        antialiasing: true
        gradient: Gradient {
            GradientStop { position: 0.0; color: dash_rpmBlink ? road.theme.danger : road.theme.faceTop }
            GradientStop { position: 1.0; color: dash_rpmBlink ? road.theme.danger : road.theme.faceBottom }
        }
        border.width: 1.5
        border.color: road.redline ? road.theme.danger : road.theme.metal

        Label {
            anchors.fill: parent
            visible: !dash_paused
            color: road.theme.ink
            font.pixelSize: text.length > 2 ? 30 : text.length > 1 ? 46 : 66
            font.bold: true
            text: dash_gear_str
        }
    }

    Label {
        id: position

        x: 188
        y: 190
        width: 48
        height: 36
        visible: dash_position_Available && dash_position > 0 && dash_position < 1000
        color: road.theme.ink
        font.pixelSize: text.length > 3 ? 20 : 26
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
            color: road.theme.muted
        }

        PedalBar {
            label: "B"
            percent: dash_brakePedal_Percent
            color: road.theme.danger
        }

        PedalBar {
            label: "T"
            percent: dash_gasPedal_Percent
            color: road.theme.good
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
            // The lap under way, and the last one still once the race is over.
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

    Rectangle {
        anchors.fill: parent
        visible: dash_paused
        opacity: 0.565
        color: road.theme.night
    }

    // Takes the place of the gear, which means nothing meanwhile.
    Item {
        anchors.fill: gearPlate
        visible: dash_paused

        Rectangle {
            x: 15
            y: 18
            width: 7
            height: 26
            antialiasing: true
            color: road.theme.ink
        }

        Rectangle {
            x: 30
            y: 18
            width: 7
            height: 26
            antialiasing: true
            color: road.theme.ink
        }

        Label {
            y: 51
            width: parent.width
            color: road.theme.ink
            font.pixelSize: 12
            font.bold: true
            text: "PAUSED"
        }
    }

    Loader {
        anchors.fill: parent
        active: dash_showMarkers
        sourceComponent: Markers {
            areas: [aids, flags, modes, speedDial, rpmDial, currentTime, delta, gearPlate,
                    position, pedals, fuel, lastLap, laps, bestLap]
        }
    }
}
