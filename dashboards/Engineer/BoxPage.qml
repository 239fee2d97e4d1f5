import QtQuick 2.15
import "Gauges"
import "Gauges/Theme.js" as Theme

// What is set up at a standstill: the motion profile and the value tuned last, how the vehicle
// stands, and the limits that the source gives.
Item {
    id: page

    readonly property bool tuned: dash_tuneName !== ""
    readonly property real tuneSpan: dash_tuneValueMax - dash_tuneValueMin

    function tuneText(value) {
        return fixed(value, dash_tuneValueIsInteger ? 0 : 2)
    }

    function fixed(value, decimals) {
        return Math.abs(value) < 100000 ? value.toFixed(decimals).replace("-", "−") : "–"
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

    Grid {
        id: attitude

        y: 62
        columns: 2
        columnSpacing: 8
        flow: Grid.TopToBottom
        rows: 4

        Repeater {
            model: ["HEADING", "PITCH", "ROLL", "BALL", "SEA LEVEL", "SEA LEVEL", "GROUND", "GROUND"]

            Cell {
                width: 84
                height: 24
                labelWidth: index < 4 ? 40 : 44
                size: 14
                label: modelData
                text: [page.fixed(dash_heading_deg, 1) + "°", page.fixed(dash_pitch_deg, 1) + "°",
                       page.fixed(dash_roll_deg, 1) + "°", page.fixed(dash_turnCoordinatorBall, 2),
                       page.fixed(dash_altitudeAboveSeaLevel_m, 1) + " m",
                       dash_altitudeAboveSeaLevel_feet + " ft",
                       page.fixed(dash_altitudeAboveGround_m, 2) + " m",
                       dash_altitudeAboveGround_feet + " ft"][index]
            }
        }
    }

    Column {
        id: limits

        x: 190
        y: 62
        width: 122

        Repeater {
            model: ["GREEN FROM", "YELLOW FROM", "RED FROM", "BLINKS FROM"]

            Cell {
                readonly property int percent: [dash_rpmGreenThreshold_Percent,
                    dash_rpmYellowThreshold_Percent, dash_rpmRedThreshold_Percent,
                    dash_rpmBlinkingThreshold_Percent][index]

                width: limits.width
                height: 24
                labelWidth: 62
                size: 14
                label: modelData
                // Nothing stands for a share of its own.
                text: (index === 3 && percent === 0 ? 95 : percent) + " %"
            }
        }
    }
}
