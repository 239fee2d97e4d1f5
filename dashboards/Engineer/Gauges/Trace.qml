import QtQuick 2.15

// The course of one value over the samples of a recorder, as a line of segments. A segment is
// a rectangle, since only rectangles have smooth edges without multisampling; each sample
// moves the segments on and reuses the oldest.
//   samples     how many samples fit
//   color, thickness
Item {
    id: trace

    property int samples: 60
    property color color: "black"
    property real thickness: 1.6

    property int head: 0 // The next segment to set.
    property bool started: false
    property real last: 0

    readonly property real step: width / samples

    // A share of the height, 0 at the bottom. NaN leaves the line where it was.
    function add(share) {
        const value = isNaN(share) ? last : Math.max(0, Math.min(1, share))
        const piece = pieces.itemAt(head)
        piece.from = started ? last : value
        piece.to = value
        piece.used = true
        last = value
        started = true
        head = (head + 1) % samples
    }

    Repeater {
        id: pieces

        model: trace.samples

        Rectangle {
            property real from: 0
            property real to: 0
            property bool used: false
            readonly property int place: (index - trace.head + trace.samples) % trace.samples
            readonly property real rise: (from - to) * trace.height

            x: place * trace.step
            y: (1 - from) * trace.height - trace.thickness / 2
            width: Math.sqrt(trace.step * trace.step + rise * rise) + trace.thickness / 2
            height: trace.thickness
            visible: used
            antialiasing: true
            color: trace.color
            transform: Rotation {
                origin.y: trace.thickness / 2
                angle: Math.atan2(rise, trace.step) * 180 / Math.PI
            }
        }
    }
}
