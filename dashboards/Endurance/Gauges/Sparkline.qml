import QtQuick 2.15
import "Theme.js" as Theme

// The course of a value as bars that enter at the right, between two lines.
//   samples    the latest last
//   capacity   how many bars fit
//   low, high    values of the two lines
//   least, most  values at the edges
Item {
    id: spark

    property var samples: []
    property int capacity: 24
    property real low: 70
    property real high: 105
    property real least: 55
    property real most: 120
    readonly property real pitch: width / capacity

    function heightOf(value) {
        return Math.max(0.04, Math.min(1, (value - least) / (most - least))) * height
    }

    Repeater {
        model: [spark.low, spark.high]

        Rectangle {
            y: spark.height - spark.heightOf(modelData)
            width: spark.width
            height: 1
            antialiasing: true
            color: Theme.metal
        }
    }

    Repeater {
        model: spark.capacity

        Rectangle {
            readonly property int place: index - spark.capacity + spark.samples.length
            readonly property bool taken: place >= 0
            readonly property real sample: taken ? spark.samples[place] : 0

            x: index * spark.pitch
            y: spark.height - height
            width: spark.pitch - 1
            height: taken ? spark.heightOf(sample) : 1
            antialiasing: true
            color: !taken ? Theme.ghost
                : sample < spark.low ? Theme.cold : sample > spark.high ? Theme.danger : Theme.accent
        }
    }
}
