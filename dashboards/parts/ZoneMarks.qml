import QtQuick 2.15

// Marks a part of a Dial's scale, `from` one value `to` another, with blocks along the edge.
Repeater {
    id: zone

    property Item dial
    property real from: 0
    property real to: 0
    property color color: "white"

    readonly property real pitch: 3.2
    readonly property real fromShare: dial ? Math.min(1, from / dial.maximum) : 0
    readonly property real toShare: dial ? Math.min(1, to / dial.maximum) : 0
    readonly property real extent: dial ? (toShare - fromShare) * dial.sweep : 0

    model: from > 0 && extent > 0 ? Math.max(1, Math.round(extent / pitch)) : 0

    Rectangle {
        readonly property real share: zone.fromShare
            + (zone.toShare - zone.fromShare) * (index + 0.5) / zone.count
        readonly property real middle: zone.dial.scaleRadius + 2 + height / 2

        width: 3.8
        height: 4.5
        x: zone.dial.radius + Math.sin(zone.dial.radians(share)) * middle - width / 2
        y: zone.dial.radius - Math.cos(zone.dial.radians(share)) * middle - height / 2
        rotation: zone.dial.angleOf(share)
        antialiasing: true
        color: zone.color
    }
}
