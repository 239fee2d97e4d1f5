import QtQuick 2.15
import "Theme.js" as Theme

// Lap times as text and in milliseconds.
// Without a clock there is no time.
//   hasDelta   whether there is a best lap to compare with
Column {
    id: table

    property bool hasDelta: false
    readonly property real longest: 36000000 // ms

    TableLine {
        width: table.width
        heading: true
        labelWidth: 30
        label: "LAPS"
        texts: ["TIME", "ms"]
    }

    TableLine {
        width: table.width
        labelWidth: 30
        label: "NOW"
        texts: [dash_currentTime_str, dash_currentTime_ms]
        known: [dash_currentTime_str_Available && dash_currentTime_ms < table.longest,
                dash_currentTime_ms_Available && dash_currentTime_ms < table.longest]
    }

    TableLine {
        width: table.width
        labelWidth: 30
        label: "LAST"
        texts: [dash_lastTime_str, dash_lastTime_ms]
        known: [dash_lastTime_str_Available && dash_lastTime_ms < table.longest,
                dash_lastTime_ms_Available && dash_lastTime_ms < table.longest]
    }

    TableLine {
        width: table.width
        labelWidth: 30
        label: "BEST"
        texts: [dash_bestTime_str, dash_bestTime_ms]
        known: [dash_bestTime_str_Available && dash_bestTime_ms < table.longest,
                dash_bestTime_ms_Available && dash_bestTime_ms < table.longest]
    }

    Item {
        width: table.width
        height: 13

        Cell {
            width: parent.width
            label: "DELTA"
            known: table.hasDelta && !isNaN(dash_deltaTime_s)
            valueColor: dash_deltaTime_s > 0 ? Theme.danger : dash_deltaTime_s < 0 ? Theme.good : Theme.ink
            text: (dash_deltaTime_s > 0 ? "+" : "") + dash_deltaTime_str.replace("-", "−") + " s"
        }
    }

    TableLine {
        width: table.width
        labelWidth: 30
        label: "DONE"
        texts: [dash_completedLaps, "of " + dash_numberOfLaps_str]
        known: [dash_completedLaps_Available, dash_numberOfLaps_Available && dash_numberOfLaps > 0
                                              && dash_numberOfLaps_str_Available]
    }
}
