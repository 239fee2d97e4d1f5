import QtQuick 2.15
import "Theme.js" as Theme

// How far the fuel lasts; 0 or less is unknown and shows as a dash.
//   perLap     percent of the tank
//   lapsLeft   until it is empty
//   boxLap     the last lap on which to come in
Column {
    id: plan

    property real perLap: 0
    property real lapsLeft: 0
    property int boxLap: 0

    spacing: 2

    Readout {
        width: 54
        height: 28
        caption: "PER LAP"
        captionSize: 10
        valueSize: 19
        unit: "%"
        available: plan.perLap > 0
        text: plan.perLap.toFixed(1)
    }

    Readout {
        width: 54
        height: 28
        caption: "LAPS LEFT"
        captionSize: 10
        valueSize: 19
        available: plan.lapsLeft > 0
        text: plan.lapsLeft.toFixed(1)
    }

    Readout {
        width: 54
        height: 28
        caption: "BOX ON LAP"
        captionSize: 10
        valueSize: 19
        valueColor: Theme.accent
        available: plan.boxLap > 0
        text: plan.boxLap
    }
}
