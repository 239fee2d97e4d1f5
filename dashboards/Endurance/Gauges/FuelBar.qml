import QtQuick 2.15
import "Theme.js" as Theme

// The tank as a bar, divided into the laps that the fuel lasts.
//   percent, low   0 to 100, and whether it is at or below the threshold
//   threshold      percent, marked
//   perLap         percent that a lap takes; 0 is unknown and leaves the bar whole
Item {
    id: tank

    property int percent: 0
    property bool low: false
    property int threshold: 0
    property real perLap: 0
    readonly property real share: Math.max(0, Math.min(1, percent / 100))
    // More divisions would blur into grey.
    readonly property int cuts: perLap >= 1 ? Math.floor(Math.min(100, percent) / perLap) : 0

    implicitWidth: 456
    implicitHeight: 14

    Bar {
        anchors.fill: parent
        corner: 0
        value: tank.share
        barColor: tank.low ? Theme.danger : Theme.accent
    }

    Repeater {
        model: tank.cuts

        Rectangle {
            // Whole laps count from the empty end, so that the current lap shrinks at the full end.
            x: (index + 1) * tank.perLap / 100 * tank.width - 1
            width: 2
            height: tank.height
            antialiasing: true
            color: Theme.night
        }
    }

    Rectangle {
        visible: tank.threshold > 0 && tank.threshold < 100
        x: tank.threshold / 100 * tank.width
        y: -4
        width: 2
        height: tank.height + 8
        antialiasing: true
        color: Theme.danger
    }
}
