import QtQuick 2.15
import "Gauges"
import "Gauges/Theme.js" as Theme

// A long-distance truck's cluster: speed in the middle, engine and fuel on the left, brakes on
// the right, and the road below.
Rectangle {
    id: truck

    // Converted to real first: Math.abs is wrong for the smallest int.
    readonly property real signedSpeed: dash_useMph ? dash_speed_mph : dash_speed_kmh
    readonly property real speed: Math.abs(signedSpeed)
    readonly property real gpsSpeed: dash_useMph ? dash_groundSpeed_mph : dash_groundSpeed_kmh
    // Above a truck's speed the scale doubles, and stays so until the vehicle stops,
    // where both scales show an empty ring.
    readonly property real reach: dash_useMph ? 100 : 140
    property bool fast: false

    readonly property bool knowsMaxRpm: dash_maxRpm > 500 && dash_maxRpm < 100000
    readonly property bool lowFuel: dash_fuelLevel_Percent <= dash_lowFuelLevelThreshold_Percent
    readonly property int hottestBrake: Math.max(dash_brakeTemp_C_FL, dash_brakeTemp_C_FR,
                                                 dash_brakeTemp_C_RL, dash_brakeTemp_C_RR)
    readonly property int warmBrake: 300
    readonly property int hotBrake: 450

    readonly property real grade: Math.tan(dash_pitch_deg * Math.PI / 180) * 100
    readonly property real elevation: dash_useMph ? dash_altitudeAboveSeaLevel_feet
                                                  : dash_altitudeAboveSeaLevel_m
    readonly property real heading: ((dash_heading_deg % 360) + 360) % 360

    // From one threshold up to the next known one.
    function zones(green, yellow, red) {
        const ends = [green, yellow, red, 100]
        const colors = [Theme.good, Theme.caution, Theme.danger]
        return colors.map((color, i) => ({
            "from": ends[i] / 100, "to": Math.min(100, ends.slice(i + 1).find(end => end > 0)) / 100,
            "color": color
        })).filter(zone => zone.from > 0)
    }

    width: 480
    height: 272
    gradient: Gradient {
        GradientStop { position: 0.0; color: Theme.metalDark }
        GradientStop { position: 1.0; color: Theme.night }
    }
    onSpeedChanged: fast = speed > reach || (fast && speed >= 1)

    Lamp {
        id: antilock

        x: 8
        y: 6
        width: 48
        opacity: dash_absInAction_Available ? 1 : 0
        text: "ABS"
        lit: dash_absInAction
    }

    Lamp {
        id: antispin

        x: 424
        y: 6
        width: 48
        opacity: dash_tcInAction_Available ? 1 : 0
        text: "ASR"
        lit: dash_tcInAction
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

    Panel {
        id: drive

        x: 8
        y: 36
        width: 128
        height: 192

        LevelGauge {
            x: 10
            y: 10
            width: 108
            caption: "RPM"
            valueColor: dash_rpmBlink ? Theme.danger : Theme.ink
            text: dash_rpm
            share: dash_rpmPercent
            zones: truck.knowsMaxRpm ? truck.zones(dash_rpmGreenThreshold_Percent,
                                                   dash_rpmYellowThreshold_Percent,
                                                   dash_rpmRedThreshold_Percent) : []
        }

        LevelGauge {
            x: 10
            y: 70
            width: 108
            caption: "LOAD"
            unit: "%"
            available: dash_engineLoad_Percent_Available
            text: dash_engineLoad_Percent
            share: dash_engineLoad_Percent_Available ? dash_engineLoad_Percent / 100 : 0
        }

        LevelGauge {
            x: 10
            y: 130
            width: 108
            caption: truck.lowFuel && dash_fuelLevel_Percent_Available ? "FUEL LOW" : "FUEL"
            unit: "%"
            available: dash_fuelLevel_Percent_Available
            valueColor: truck.lowFuel ? Theme.caution : Theme.ink
            text: dash_fuelLevel_Percent
            share: dash_fuelLevel_Percent_Available ? dash_fuelLevel_Percent / 100 : 0
            barColor: truck.lowFuel ? Theme.caution : Theme.accent
            zones: [{ "from": 0, "to": Math.min(100, dash_lowFuelLevelThreshold_Percent) / 100,
                      "color": Theme.caution }]
        }
    }

    SpeedRing {
        id: speedRing

        x: 140
        y: 33
        width: 200
        value: truck.speed
        majorStep: truck.fast ? 40 : 20
        majorCount: dash_useMph ? 5 : 7
    }

    Item {
        id: centre

        x: 190
        y: 98
        width: 100
        height: 104

        Label {
            width: parent.width
            height: 54
            fits: true
            color: Theme.ink
            font.pixelSize: 58
            font.bold: true
            text: truck.speed > 999 ? "–" : truck.speed
        }

        Label {
            y: 53
            width: parent.width
            height: 16
            font.pixelSize: 14
            text: dash_useMph ? "mph" : "km/h"
        }

        Label {
            y: 70
            width: parent.width
            height: 32
            fits: true
            color: Theme.accent
            font.pixelSize: 30
            font.bold: true
            // On a slope the driver needs to know which gear the gearbox has chosen.
            text: dash_gear_str + (dash_autoShifter && dash_gear > 0 ? " " + dash_gear : "")
        }
    }

    Lamp {
        id: limiter

        x: 196
        y: 204
        width: 88
        height: 22
        opacity: dash_speedLimiter_Available ? 1 : 0
        text: "LIMITER"
        lit: dash_speedLimiter
        litColor: Theme.accent
    }

    Panel {
        id: brakes

        x: 344
        y: 36
        width: 128
        height: 192

        Label {
            x: 10
            y: 6
            height: 16
            font.pixelSize: 12
            text: "BRAKES"
        }

        Label {
            x: parent.width - width - 10
            y: 6
            height: 16
            font.pixelSize: 12
            text: "°C"
        }

        BrakeCorner {
            x: 6
            y: 26
            known: dash_brakeTemp_C_FL_Available
            temp: dash_brakeTemp_C_FL
            warmFrom: truck.warmBrake
            hotFrom: truck.hotBrake
        }

        BrakeCorner {
            x: 64
            y: 26
            mirrored: true
            known: dash_brakeTemp_C_FR_Available
            temp: dash_brakeTemp_C_FR
            warmFrom: truck.warmBrake
            hotFrom: truck.hotBrake
        }

        BrakeCorner {
            x: 6
            y: 84
            known: dash_brakeTemp_C_RL_Available
            temp: dash_brakeTemp_C_RL
            warmFrom: truck.warmBrake
            hotFrom: truck.hotBrake
        }

        BrakeCorner {
            x: 64
            y: 84
            mirrored: true
            known: dash_brakeTemp_C_RR_Available
            temp: dash_brakeTemp_C_RR
            warmFrom: truck.warmBrake
            hotFrom: truck.hotBrake
        }

        Lamp {
            x: 6
            y: 142
            width: 116
            height: 24
            visible: dash_brakeTemp_C_FL_Available
            text: lit ? "USE RETARDER" : armed ? "WARM" : "COOL"
            lit: truck.hottestBrake >= truck.hotBrake
            armed: truck.hottestBrake >= truck.warmBrake
            litColor: lit ? Theme.danger : Theme.caution
        }

        Label {
            x: 10
            y: 172
            height: 14
            visible: pedal.visible
            text: "PEDAL"
        }

        Bar {
            id: pedal

            x: 52
            y: 175
            width: 68
            height: 8
            corner: 3
            visible: dash_brakePedal_Percent_Available
            value: dash_brakePedal_Percent / 100
            barColor: Theme.danger
        }
    }

    Row {
        id: road

        x: 8
        y: 234

        Readout {
            width: 116
            height: 34
            caption: "GRADE"
            valueSize: 20
            unit: "%"
            unitSize: 13
            align: Text.AlignHCenter
            available: Math.abs(truck.grade) < 100
            text: String(Math.round(truck.grade)).replace("-", "−")
        }

        Readout {
            width: 116
            height: 34
            caption: "ELEVATION"
            valueSize: 20
            unit: dash_useMph ? "ft" : "m"
            unitSize: 13
            align: Text.AlignHCenter
            available: Math.abs(truck.elevation) < 100000
            text: String(Math.round(truck.elevation)).replace("-", "−")
        }

        Readout {
            width: 116
            height: 34
            caption: "HEADING"
            valueSize: 20
            align: Text.AlignHCenter
            available: !isNaN(truck.heading)
            text: ["N", "NE", "E", "SE", "S", "SW", "W", "NW"][Math.round(truck.heading / 45) % 8]
                + " " + Math.round(truck.heading) % 360 + "°"
        }

        Readout {
            width: 116
            height: 34
            caption: "GPS"
            valueSize: 20
            unit: dash_useMph ? "mph" : "km/h"
            unitSize: 13
            align: Text.AlignHCenter
            available: Math.abs(truck.gpsSpeed) < 1000
            text: Math.abs(truck.gpsSpeed)
        }
    }

    PauseVeil {
        shown: dash_paused
        badge: centre
    }

    Markers {
        shown: dash_showMarkers
    }
}
