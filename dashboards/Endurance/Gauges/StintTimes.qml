import QtQuick 2.15
import "Theme.js" as Theme

// The laps of a stint with their times, the newest first.
//   times   of `Stint`
//   rows    how many laps fit
//   best    the time that stands out
Column {
    id: list

    property var times: []
    property int rows: 5
    property string best

    Repeater {
        model: list.rows

        Item {
            readonly property var entry: index < list.times.length ? list.times[index] : null

            width: 142
            height: 18

            Label {
                width: 40
                height: parent.height
                horizontalAlignment: Text.AlignLeft
                fits: true
                color: parent.entry ? Theme.muted : Theme.ghost
                font.pixelSize: 13
                text: parent.entry ? "LAP " + parent.entry.lap : "LAP"
            }

            Label {
                x: 44
                width: 98
                height: parent.height
                horizontalAlignment: Text.AlignRight
                fits: true
                color: !parent.entry ? Theme.ghost
                    : parent.entry.time === list.best ? Theme.good : Theme.ink
                font.pixelSize: 17
                font.bold: true
                text: parent.entry && parent.entry.time !== "" ? parent.entry.time : "–"
            }
        }
    }
}
