import QtQuick 2.15

// The pen at the right edge of a chart, at the current value.
//   chart   the item that it moves along
//   share   of the chart's height, 0 at the bottom
//   color
Needle {
    property Item chart
    property real share: 0
    readonly property real place: isNaN(share) ? 0.5 : Math.max(0, Math.min(1, share))

    x: chart.x + chart.width + 8
    y: chart.y + (1 - place) * chart.height
    rotation: -90
    length: 9
    thickness: 6
}
