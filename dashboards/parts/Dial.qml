import QtQuick 2.15
import "Theme.js" as Theme

// A round instrument over `sweep` degrees, open at the bottom. Everything that depends only on the scale
// is static; the value moves only the needle.
//   value       where the needle points, in the scale's unit, from 0
//   majorStep, majorCount, minorPerMajor   the scale: numbered ticks, and the parts between two
//   numeralUnit, numeralSize   a numeral is the value divided by the unit; pixels
//   cautionFrom, dangerFrom    marks from a value up to the end of the scale; 0 draws none
//   needleColor
Item {
    id: dial

    property real value: 0
    property real majorStep: 10
    property int majorCount: 10
    property int minorPerMajor: 2
    property real numeralUnit: 1
    property int numeralSize: 15
    property real cautionFrom: 0
    property real dangerFrom: 0
    property real sweep: 260
    property color needleColor: Theme.accent

    readonly property real radius: width / 2
    readonly property real scaleRadius: radius - 12
    readonly property real maximum: majorStep * majorCount
    readonly property int tickCount: majorCount * minorPerMajor
    readonly property real share: Math.max(0, Math.min(1.01, value / maximum))

    function angleOf(share) {
        return (share - 0.5) * sweep
    }

    function radians(share) {
        return angleOf(share) * Math.PI / 180
    }

    function isDanger(share) {
        return dangerFrom > 0 && share * maximum >= dangerFrom - maximum * 0.001
    }

    implicitWidth: 204
    implicitHeight: width

    Rectangle {
        anchors.fill: parent
        anchors.margins: 3.5
        radius: width / 2
        antialiasing: true
        gradient: Gradient {
            GradientStop { position: 0.0; color: Theme.faceTop }
            GradientStop { position: 0.55; color: Theme.faceMiddle }
            GradientStop { position: 1.0; color: Theme.faceBottom }
        }
    }

    // The bezel is lit from above: a bright ring under a darker one that is set lower and leaves a
    // crescent.
    Rectangle {
        anchors.fill: parent
        radius: width / 2
        antialiasing: true
        color: "transparent"
        border.width: 2
        border.color: Theme.bezelBright
    }

    Rectangle {
        x: 0.6
        y: 1.2
        width: parent.width - 1.2
        height: width
        radius: width / 2
        antialiasing: true
        color: "transparent"
        border.width: 2.4
        border.color: Theme.bezelDark
    }

    Rectangle {
        x: 2.6
        y: 2.6
        width: parent.width - 5.2
        height: width
        radius: width / 2
        antialiasing: true
        color: "transparent"
        border.width: 1.6
        border.color: Theme.bezelEdge
    }

    Rectangle {
        anchors.centerIn: parent
        width: 2 * dial.scaleRadius + 2
        height: width
        radius: width / 2
        antialiasing: true
        color: "transparent"
        border.width: 0.7
        border.color: Theme.ghost
    }

    ZoneMarks {
        dial: dial
        from: dial.cautionFrom
        to: dial.dangerFrom > 0 ? dial.dangerFrom : dial.maximum
        color: Theme.caution
    }

    ZoneMarks {
        dial: dial
        from: dial.dangerFrom
        to: dial.maximum
        color: Theme.danger
    }

    Repeater {
        model: dial.tickCount + 1

        Rectangle {
            readonly property bool major: index % dial.minorPerMajor === 0
            readonly property real share: index / dial.tickCount
            readonly property real middle: dial.scaleRadius - height / 2

            width: major ? 2.2 : 1.1
            height: major ? 12 : 7
            x: dial.radius + Math.sin(dial.radians(share)) * middle - width / 2
            y: dial.radius - Math.cos(dial.radians(share)) * middle - height / 2
            rotation: dial.angleOf(share)
            antialiasing: true
            color: dial.isDanger(share) ? Theme.danger : major ? Theme.ink : Theme.muted
        }
    }

    Repeater {
        model: dial.majorCount + 1

        Label {
            readonly property real share: index / dial.majorCount
            // Wide and narrow numerals keep the same gap to the tick.
            readonly property real across: Math.abs(Math.sin(dial.radians(share))) * width / 2
            readonly property real along: Math.abs(Math.cos(dial.radians(share))) * font.pixelSize * 0.36
            readonly property real middle: dial.scaleRadius - 16 - across - along

            x: dial.radius + Math.sin(dial.radians(share)) * middle - width / 2
            y: dial.radius - Math.cos(dial.radians(share)) * middle - height / 2
            color: dial.isDanger(share) ? Theme.danger : Theme.ink
            font.pixelSize: dial.numeralSize
            font.bold: true
            text: index * dial.majorStep / dial.numeralUnit
        }
    }

    Needle {
        x: dial.radius
        y: dial.radius + 2
        rotation: dial.angleOf(dial.share)
        length: dial.scaleRadius - 3
        thickness: 4.8
        color: "#80000000"
    }

    Needle {
        x: dial.radius
        y: dial.radius
        rotation: dial.angleOf(dial.share)
        length: dial.scaleRadius - 3
        thickness: 4.8
        color: dial.needleColor
    }

    Rectangle {
        anchors.centerIn: parent
        width: 26
        height: 26
        radius: 13
        antialiasing: true
        border.color: Theme.bezelEdge
        border.width: 1
        gradient: Gradient {
            GradientStop { position: 0.0; color: Theme.bezelDark }
            GradientStop { position: 1.0; color: Theme.metalDark }
        }
    }

    Rectangle {
        anchors.centerIn: parent
        width: 16
        height: 16
        radius: 8
        antialiasing: true
        gradient: Gradient {
            GradientStop { position: 0.0; color: Theme.faceTop }
            GradientStop { position: 1.0; color: Theme.metal }
        }
    }
}
