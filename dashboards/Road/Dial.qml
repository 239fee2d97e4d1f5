import QtQuick 2.15

// A round instrument over `sweep` degrees, open at the bottom. All that depends on the scale alone
// is static; the value moves nothing but the needle.
Item {
    id: dial

    property real value: 0
    property real majorStep: 10
    property int majorCount: 10
    property int minorPerMajor: 2
    property real numeralUnit: 1
    property int numeralSize: 15
    // Marks from a value up to the end of the scale; a value of 0 draws none.
    property real cautionFrom: 0
    property real dangerFrom: 0

    readonly property real sweep: 260
    readonly property real radius: width / 2
    readonly property real scaleRadius: radius - 12
    readonly property real maximum: majorStep * majorCount
    readonly property int tickCount: majorCount * minorPerMajor
    readonly property real share: Math.max(0, Math.min(1.01, value / maximum))
    readonly property Theme theme: Theme {}

    function angleOf(share) {
        return (share - 0.5) * sweep
    }

    function radians(share) {
        return angleOf(share) * Math.PI / 180
    }

    function isDanger(share) {
        return dangerFrom > 0 && share * maximum >= dangerFrom - maximum * 0.001
    }

    height: width

    Rectangle {
        anchors.fill: parent
        anchors.margins: 3.5
        radius: width / 2
        antialiasing: true
        gradient: Gradient {
            GradientStop { position: 0.0; color: dial.theme.faceTop }
            GradientStop { position: 0.55; color: "#11151a" }
            GradientStop { position: 1.0; color: dial.theme.faceBottom }
        }
    }

    // The bezel is lit from above: a bright ring, of which a darker one that hangs lower leaves a
    // crescent.
    Rectangle {
        anchors.fill: parent
        radius: width / 2
        antialiasing: true
        color: "transparent"
        border.width: 2
        border.color: "#8d969f"
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
        border.color: "#2b3138"
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
        border.color: "#040506"
    }

    Rectangle {
        anchors.centerIn: parent
        width: 2 * dial.scaleRadius + 2
        height: width
        radius: width / 2
        antialiasing: true
        color: "transparent"
        border.width: 0.7
        border.color: dial.theme.ghost
    }

    ZoneMarks {
        dial: dial
        from: dial.cautionFrom
        to: dial.dangerFrom > 0 ? dial.dangerFrom : dial.maximum
        color: dial.theme.caution
    }

    ZoneMarks {
        dial: dial
        from: dial.dangerFrom
        to: dial.maximum
        color: dial.theme.danger
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
            color: dial.isDanger(share) ? dial.theme.danger : major ? dial.theme.ink : dial.theme.muted
        }
    }

    Repeater {
        model: dial.majorCount + 1

        Label {
            readonly property real share: index / dial.majorCount
            // The same gap to the tick for a wide numeral as for a narrow one.
            readonly property real across: Math.abs(Math.sin(dial.radians(share))) * width / 2
            readonly property real along: Math.abs(Math.cos(dial.radians(share))) * font.pixelSize * 0.36
            readonly property real middle: dial.scaleRadius - 16 - across - along

            x: dial.radius + Math.sin(dial.radians(share)) * middle - width / 2
            y: dial.radius - Math.cos(dial.radians(share)) * middle - height / 2
            color: dial.isDanger(share) ? dial.theme.danger : dial.theme.ink
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
        color: dial.theme.accent
    }

    Rectangle {
        anchors.centerIn: parent
        width: 26
        height: 26
        radius: 13
        antialiasing: true
        border.color: "#050607"
        border.width: 1
        gradient: Gradient {
            GradientStop { position: 0.0; color: "#4a525a" }
            GradientStop { position: 1.0; color: dial.theme.metalDark }
        }
    }

    Rectangle {
        anchors.centerIn: parent
        width: 16
        height: 16
        radius: 8
        antialiasing: true
        gradient: Gradient {
            GradientStop { position: 0.0; color: "#1a1f24" }
            GradientStop { position: 1.0; color: dial.theme.metal }
        }
    }
}
