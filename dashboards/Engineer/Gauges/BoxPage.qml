import QtQuick 2.15
import "Numbers.js" as Numbers
import "Theme.js" as Theme

// For setting up at a standstill: the motion profile, the value tuned last, how the vehicle
// stands, and the limits that the source gives.
Item {
    id: page

    readonly property bool tuned: dash_tuneName !== ""
    readonly property real tuneSpan: dash_tuneValueMax - dash_tuneValueMin

    function tuneText(value) {
        return fixed(value, dash_tuneValueIsInteger ? 0 : 2)
    }

    function fixed(value, decimals) {
        return Math.abs(value) < 100000 ? Numbers.fixed(value, decimals) : "–"
    }

    Label {
        width: 48
        height: 18
        horizontalAlignment: Text.AlignLeft
        font.pixelSize: 10
        text: "PROFILE"
    }

    Label {
        x: 48
        width: page.width - x
        height: 18
        horizontalAlignment: Text.AlignLeft
        elide: Text.ElideMiddle
        color: dash_motionProfileName === "" ? Theme.faint : Theme.ink
        font.pixelSize: 15
        font.bold: true
        text: dash_motionProfileName === "" ? "None" : dash_motionProfileName
    }

    Label {
        y: 20
        width: 48
        height: 14
        horizontalAlignment: Text.AlignLeft
        font.pixelSize: 10
        text: "TUNED"
    }

    Label {
        x: 48
        y: 20
        width: page.width - x
        height: 14
        horizontalAlignment: Text.AlignLeft
        elide: Text.ElideMiddle
        color: page.tuned ? Theme.muted : Theme.faint
        font.pixelSize: 12
        text: page.tuned ? dash_tuneGroup + " › " + dash_tuneName + " › " + dash_tuneValueName
                         : "Nothing tuned yet"
    }

    Label {
        x: 0
        y: 36
        width: 44
        height: 16
        horizontalAlignment: Text.AlignLeft
        fits: true
        text: page.tuned ? page.tuneText(dash_tuneValueMin) : ""
    }

    Bar {
        x: 48
        y: 40
        width: 120
        corner: 1
        value: page.tuned && page.tuneSpan > 0
            ? (dash_tuneValueCurrent - dash_tuneValueMin) / page.tuneSpan : 0
        barColor: Theme.accent
    }

    Label {
        x: 172
        y: 36
        width: 44
        height: 16
        horizontalAlignment: Text.AlignLeft
        fits: true
        text: page.tuned ? page.tuneText(dash_tuneValueMax) : ""
    }

    Label {
        x: 212
        y: 34
        width: 52
        height: 18
        horizontalAlignment: Text.AlignRight
        fits: true
        color: page.tuned ? Theme.ink : Theme.faint
        font.pixelSize: 18
        font.bold: true
        text: page.tuned ? page.tuneText(dash_tuneValueCurrent) : "–"
    }

    Label {
        x: 266
        y: 38
        width: 46
        height: 16
        horizontalAlignment: Text.AlignRight
        fits: true
        text: "change " + dash_tuneChangeCounter
    }

    Column {
        id: attitude

        y: 62

        Cell {
            width: 84
            height: 24
            labelWidth: 40
            size: 14
            label: "HEADING"
            text: page.fixed(dash_heading_deg, 1) + "°"
        }

        Cell {
            width: 84
            height: 24
            labelWidth: 40
            size: 14
            label: "PITCH"
            text: page.fixed(dash_pitch_deg, 1) + "°"
        }

        Cell {
            width: 84
            height: 24
            labelWidth: 40
            size: 14
            label: "ROLL"
            text: page.fixed(dash_roll_deg, 1) + "°"
        }

        Cell {
            width: 84
            height: 24
            labelWidth: 40
            size: 14
            label: "BALL"
            text: page.fixed(dash_turnCoordinatorBall, 2)
        }
    }

    Column {
        id: heights

        x: 90
        y: 62

        Cell {
            width: 94
            height: 24
            labelWidth: 44
            size: 14
            label: "SEA LEVEL"
            text: page.fixed(dash_altitudeAboveSeaLevel_m, 1) + " m"
        }

        Cell {
            width: 94
            height: 24
            labelWidth: 44
            size: 14
            label: "SEA LEVEL"
            text: dash_altitudeAboveSeaLevel_feet + " ft"
        }

        Cell {
            width: 94
            height: 24
            labelWidth: 44
            size: 14
            label: "GROUND"
            text: page.fixed(dash_altitudeAboveGround_m, 2) + " m"
        }

        Cell {
            width: 94
            height: 24
            labelWidth: 44
            size: 14
            label: "GROUND"
            text: dash_altitudeAboveGround_feet + " ft"
        }
    }

    Column {
        id: limits

        x: 190
        y: 62

        Cell {
            width: 122
            height: 24
            labelWidth: 62
            size: 14
            label: "GREEN FROM"
            text: dash_rpmGreenThreshold_Percent + " %"
        }

        Cell {
            width: 122
            height: 24
            labelWidth: 62
            size: 14
            label: "YELLOW FROM"
            text: dash_rpmYellowThreshold_Percent + " %"
        }

        Cell {
            width: 122
            height: 24
            labelWidth: 62
            size: 14
            label: "RED FROM"
            text: dash_rpmRedThreshold_Percent + " %"
        }

        Cell {
            width: 122
            height: 24
            labelWidth: 62
            size: 14
            label: "BLINKS FROM"
            // Zero stands for no share.
            text: (dash_rpmBlinkingThreshold_Percent === 0 ? 95 : dash_rpmBlinkingThreshold_Percent) + " %"
        }
    }
}
