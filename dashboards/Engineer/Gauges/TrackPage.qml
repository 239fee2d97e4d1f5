import QtQuick 2.15
import "Numbers.js" as Numbers
import "Theme.js" as Theme

// The recorder: accelerations with their trail, pedals and steering over the last six seconds.
//
// Only the telemetry's clock counts: a sample is taken each time the lap time has advanced by a tenth of a
// second or, in a game without lap times, at every third publication that brings something new. So
// the paper stands still while the car or the game does.
Item {
    id: page

    readonly property int publication: dash_frameCounter1000
    readonly property bool pedalsKnown: dash_gasPedal_Percent_Available
        && dash_brakePedal_Percent_Available && dash_clutchPedal_Percent_Available
    readonly property real angleLength: Math.abs(dash_angle)
    readonly property var pens: [Theme.throttle, Theme.brake, Theme.clutch]
    property real angleRange: 90

    readonly property int sampleMs: 100
    readonly property int samples: 60
    property int sampledTenth: -1
    property string sampledState
    property int waited: 0

    // Samples to take now: several if publications are less frequent than samples.
    function due() {
        if (dash_currentTime_ms_Available) {
            const tenth = Math.floor(dash_currentTime_ms / sampleMs)
            const passed = tenth - sampledTenth
            const first = sampledTenth < 0 || passed < 0
            sampledTenth = tenth
            return first ? 1 : Math.min(passed, samples)
        }
        const state = [dash_gasPedal_Percent, dash_brakePedal_Percent, dash_clutchPedal_Percent,
                       dash_angle, dash_surgeG, dash_swayG].join()
        waited = Math.min(3, waited + 1)
        if (state === sampledState || waited < 3)
            return 0
        sampledState = state
        waited = 0
        return 1
    }

    function take() {
        while (angleLength > angleRange && angleRange < 1440)
            angleRange *= 2
        if (pedalsKnown) {
            throttle.add(dash_gasPedal_Percent / 100)
            brake.add(dash_brakePedal_Percent / 100)
            clutch.add(dash_clutchPedal_Percent / 100)
        }
        steering.add(0.5 + dash_angle / angleRange / 2)
        gPlot.add()
    }

    onPublicationChanged: {
        if (dash_paused)
            return
        for (let count = due(); count > 0; --count)
            take()
    }

    GPlot {
        id: gPlot

        width: 128
        surge: dash_surgeG
        sway: dash_swayG
    }

    Row {
        y: 131
        spacing: 4

        Repeater {
            model: ["SURGE", "SWAY", "HEAVE"]

            Readout {
                readonly property real g: [dash_surgeG, dash_swayG, dash_heaveG][index]

                width: 40
                height: 29
                captionSize: 10
                valueSize: 15
                align: Text.AlignRight
                available: Math.abs(g) < 100
                caption: modelData
                text: Numbers.signed(g, 2)
            }
        }
    }

    Row {
        id: legend

        x: chart.x
        spacing: 7

        Repeater {
            model: ["GAS", "BRAKE", "CLUTCH"]

            Cell {
                readonly property int percent: [dash_gasPedal_Percent, dash_brakePedal_Percent,
                                                dash_clutchPedal_Percent][index]

                width: [46, 54, 60][index]
                labelWidth: width - 23
                label: modelData
                valueColor: page.pens[index]
                known: [dash_gasPedal_Percent_Available, dash_brakePedal_Percent_Available,
                        dash_clutchPedal_Percent_Available][index]
                text: percent
            }
        }
    }

    Chart {
        id: chart

        x: 136
        y: 17
        width: 168
        height: 88
        columns: 6
        rows: 4

        Trace {
            id: clutch

            anchors.fill: parent
            color: Theme.clutch
        }

        Trace {
            id: throttle

            anchors.fill: parent
            color: Theme.throttle
        }

        Trace {
            id: brake

            anchors.fill: parent
            color: Theme.brake
        }
    }

    Pen {
        chart: chart
        visible: dash_clutchPedal_Percent_Available
        share: dash_clutchPedal_Percent / 100
        color: Theme.clutch
    }

    Pen {
        chart: chart
        visible: dash_gasPedal_Percent_Available
        share: dash_gasPedal_Percent / 100
        color: Theme.throttle
    }

    Pen {
        chart: chart
        visible: dash_brakePedal_Percent_Available
        share: dash_brakePedal_Percent / 100
        color: Theme.brake
    }

    Cell {
        x: chart.x
        y: 108
        width: 92
        labelWidth: 48
        label: "STEERING"
        valueColor: Theme.steering
        known: Math.abs(dash_angle) < 100000
        text: Numbers.signed(dash_angle, 0) + "°"
    }

    Label {
        x: chart.x + chart.width - width
        y: 108
        width: 70
        height: 13
        horizontalAlignment: Text.AlignRight
        font.pixelSize: 10
        text: "±" + page.angleRange + "°" + (dash_currentTime_ms_Available ? "  6 s" : "")
    }

    Chart {
        id: steeringChart

        x: chart.x
        y: 124
        width: chart.width
        height: 36
        columns: 6
        rows: 2

        Trace {
            id: steering

            anchors.fill: parent
            color: Theme.steering
        }
    }

    Pen {
        chart: steeringChart
        share: 0.5 + dash_angle / page.angleRange / 2
        color: Theme.steering
    }
}
