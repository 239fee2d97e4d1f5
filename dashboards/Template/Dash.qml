import QtQuick 2.15
// Parts lie in the dashboard's folder Gauges; each file begins with a list of its properties.
import "Gauges"
import "Gauges/Theme.js" as Theme

// A good start for a dashboard of your own: copy it and change it.
//
// The root is 480 x 272; the picture is scaled from there, so nothing here depends on the screen.
// Names that begin with dash_ are the telemetry. Bindings to them move the picture; use no
// timers and no animations.
Rectangle {
    id: root

    // Values that several bindings need are properties of the root.
    readonly property real speed: dash_useMph ? dash_speed_mph : dash_speed_kmh

    width: 480
    height: 272
    gradient: Gradient {
        GradientStop { position: 0.0; color: Theme.metalDark }
        GradientStop { position: 1.0; color: Theme.night }
    }

    // The thresholds come from the game or from the user, so that the lamps fit every engine.
    RpmStrip {
        x: 16
        y: 14
        width: 448
        height: 22
        rpm: dash_rpm
        maxRpm: dash_maxRpm
        green: dash_rpmGreenThreshold_Percent
        yellow: dash_rpmYellowThreshold_Percent
        red: dash_rpmRedThreshold_Percent
        blinking: dash_rpmBlinkingThreshold_Percent
        flash: dash_rpmBlink
    }

    FlagBand {
        x: 98
        y: 46
        yellow: dash_sessionFlagYellow
        blue: dash_sessionFlagBlue
        black: dash_sessionFlagBlack
        blackAndWhite: dash_sessionFlagBlackAndWhite
    }

    // `fits` keeps even absurd values inside the box; the fixed width keeps digits in place.
    Label {
        x: 16
        y: 106
        width: 152
        height: 86
        horizontalAlignment: Text.AlignRight
        fits: true
        color: Theme.ink
        font.pixelSize: 92
        font.bold: true
        // The gear shows reversing.
        text: Math.abs(root.speed)
    }

    Label {
        x: 16
        y: 198
        width: 150
        horizontalAlignment: Text.AlignRight
        font.pixelSize: 18
        text: dash_useMph ? "mph" : "km/h"
    }

    GearPlate {
        id: gear

        x: 194
        y: 92
        width: 92
        height: 132
        size: 118
        text: dash_gear_str
        flash: dash_rpmBlink
    }

    // A value that not every game sends has a twin that ends in _Available: without the value a dash
    // shows instead of a zero that nobody measured.
    LapTime {
        x: 310
        y: 100
        width: 154
        timeSize: 32
        label: "LAP TIME"
        time: dash_currentTime_str
        known: dash_currentTime_str_Available
    }

    Readout {
        x: 310
        y: 166
        width: 154
        height: 52
        caption: "FUEL"
        valueSize: 36
        unit: "%"
        unitSize: 18
        available: dash_fuelLevel_Percent_Available
        // Not by colour alone: the text says it too.
        valueColor: dash_fuelLevel_Percent <= dash_lowFuelLevelThreshold_Percent ? Theme.caution : Theme.ink
        text: dash_fuelLevel_Percent
    }

    // Last, so that it covers everything.
    PauseVeil {
        shown: dash_paused
        badge: gear
    }

    // Outlines of the areas, switched on in the editor.
    Markers {
        shown: dash_showMarkers
    }
}
