import QtQuick 2.15
import "Gauges"
import "Gauges/Numbers.js" as Numbers
import "Gauges/Theme.js" as Theme

Rectangle {
    id: flight

    // Converted to real first: Math.abs is wrong for the smallest int.
    readonly property real signedAirspeed: dash_useMph ? dash_speed_mph : dash_speed_knots
    readonly property real signedGroundSpeed: dash_useMph ? dash_groundSpeed_mph : dash_groundSpeed_knots
    readonly property real groundSpeed: Math.abs(signedGroundSpeed)
    readonly property string speedUnit: dash_useMph ? "MPH" : "KNOTS"
    readonly property int wholeHeading: isFinite(dash_heading_deg)
        ? ((Math.round(dash_heading_deg) - 1) % 360 + 360) % 360 + 1 : 0

    width: 480
    height: 272
    gradient: Gradient {
        GradientStop { position: 0.0; color: "#5b6865" }
        GradientStop { position: 1.0; color: Theme.metalDark }
    }

    Grid {
        id: instruments

        x: 4
        y: 4
        columns: 3
        spacing: 3

        AirspeedIndicator {
            speed: Math.abs(flight.signedAirspeed)
            unit: flight.speedUnit
        }

        AttitudeIndicator {
            id: attitude

            pitch: dash_pitch_deg
            roll: dash_roll_deg
        }

        Altimeter {
            feet: dash_altitudeAboveSeaLevel_feet
        }

        TurnCoordinator {
            roll: dash_roll_deg
            speed: dash_speed_kmh
            ball: dash_turnCoordinatorBall
        }

        HeadingIndicator {
            heading: dash_heading_deg
        }

        RadioAltimeter {
            feet: dash_altitudeAboveGround_feet
        }
    }

    Column {
        id: numbers

        x: 408
        y: 5
        width: 64
        spacing: 3

        Readout {
            width: parent.width
            caption: "HEADING"
            valueSize: 20
            align: Text.AlignRight
            text: ("00" + flight.wholeHeading).slice(-3) + "°"
        }

        Readout {
            width: parent.width
            caption: "GS " + flight.speedUnit
            valueSize: 20
            align: Text.AlignRight
            text: flight.groundSpeed > 9999 ? "–" : flight.groundSpeed
        }

        Readout {
            width: parent.width
            caption: "HEAVE G"
            valueSize: 20
            align: Text.AlignRight
            available: Math.abs(dash_heaveG) < 100
            text: Numbers.signed(dash_heaveG, 1)
        }

        Readout {
            width: parent.width
            caption: "RPM"
            valueSize: 20
            align: Text.AlignRight
            text: dash_rpm
        }
    }

    Row {
        id: levels

        x: numbers.x + (numbers.width - width) / 2
        y: 146
        spacing: 7

        PedalBar {
            opacity: dash_gasPedal_Percent_Available ? 1 : 0
            height: 72
            barWidth: 14
            labelSize: 9
            label: "THR"
            percent: dash_gasPedal_Percent
        }

        PedalBar {
            opacity: dash_engineLoad_Percent_Available ? 1 : 0
            height: 72
            barWidth: 14
            labelSize: 9
            label: "LD"
            color: Theme.good
            percent: dash_engineLoad_Percent
        }

        PedalBar {
            opacity: dash_fuelLevel_Percent_Available ? 1 : 0
            height: 72
            barWidth: 14
            labelSize: 9
            label: "FUEL"
            color: dash_fuelLevel_Percent <= dash_lowFuelLevelThreshold_Percent ? Theme.caution : Theme.ink
            percent: dash_fuelLevel_Percent
        }
    }

    Annunciators {
        id: flags

        x: 404
        y: 223
        width: 72
        height: 44
        yellow: dash_sessionFlagYellow
        blue: dash_sessionFlagBlue
        black: dash_sessionFlagBlack
        blackAndWhite: dash_sessionFlagBlackAndWhite
    }

    // On the attitude indicator, where it covers no text.
    Item {
        id: pausePlace

        x: instruments.x + attitude.x + (attitude.width - width) / 2
        y: instruments.y + attitude.y + (attitude.height - height) / 2
        width: 64
        height: 74
    }

    PauseVeil {
        shown: dash_paused
        badge: pausePlace
    }

    Markers {
        shown: dash_showMarkers
    }
}
