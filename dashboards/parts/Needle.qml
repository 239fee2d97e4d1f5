import QtQuick 2.15

// A needle that turns about its own origin and points up at 0 degrees. The taper is two bars that meet at the
// tip, since only rectangles have smooth edges without a multisampled framebuffer.
//   length, thickness (at the root), color; turn it with `rotation`
Item {
    id: needle

    property color color: "white"
    property real length: 80
    property real thickness: 3
    readonly property real spread: Math.atan(thickness / 4 / length) * 180 / Math.PI

    Repeater {
        model: [-needle.spread, needle.spread]

        Rectangle {
            width: needle.thickness * 0.52
            height: needle.length
            x: -width / 2
            y: -needle.length
            transformOrigin: Item.Top
            rotation: modelData
            antialiasing: true
            color: needle.color
        }
    }
}
