import QtQuick 2.15
import "Theme.js" as Theme

// Acceleration as a dot with a trail, as the driver feels it: braking up, a
// right turn to the left. The scale grows to the largest value and stays.
//   surge, sway   g
Item {
    id: plot

    property real surge: 0
    property real sway: 0
    property int samples: 48
    property real range: 1.5

    property int head: 0 // The next dot to set.
    readonly property real length: Math.sqrt(surge * surge + sway * sway)
    readonly property bool sane: isFinite(length)
    readonly property real pixelsPerG: width / 2 / range

    function add() {
        if (!sane)
            return
        while (length > range && range < 12)
            range *= 2
        const dot = dots.itemAt(head)
        dot.across = -sway
        dot.down = surge
        dot.used = true
        head = (head + 1) % samples
    }

    implicitWidth: 130
    implicitHeight: width

    Rectangle {
        anchors.fill: parent
        radius: width / 2
        antialiasing: true
        color: Theme.chart
        border.width: 1
        border.color: Theme.muted
    }

    Repeater {
        model: 2

        Rectangle {
            anchors.centerIn: parent
            width: plot.width * (index + 1) / 3
            height: width
            radius: width / 2
            antialiasing: true
            color: "transparent"
            border.width: 1
            border.color: Theme.grid
        }
    }

    Rectangle {
        anchors.centerIn: parent
        width: parent.width - 2
        height: 1
        color: Theme.grid
    }

    Rectangle {
        anchors.centerIn: parent
        width: 1
        height: parent.height - 2
        color: Theme.grid
    }

    Label {
        x: plot.width - width
        y: plot.height - height
        width: 32
        horizontalAlignment: Text.AlignRight
        font.pixelSize: 10
        text: plot.range + " g"
    }

    Repeater {
        id: dots

        model: plot.samples

        Rectangle {
            property real across: 0
            property real down: 0
            property bool used: false
            readonly property int place: (index - plot.head + plot.samples) % plot.samples
            readonly property real shrink: Math.min(plot.pixelsPerG,
                plot.width / 2 / Math.max(0.001, Math.sqrt(across * across + down * down)))

            x: plot.width / 2 + across * shrink - width / 2
            y: plot.height / 2 + down * shrink - height / 2
            width: 4
            height: 4
            radius: 2
            visible: used
            opacity: 0.1 + 0.6 * place / plot.samples
            antialiasing: true
            color: Theme.cold
        }
    }

    Rectangle {
        readonly property real shrink: !plot.sane ? 0
            : Math.min(plot.pixelsPerG, plot.width / 2 / Math.max(0.001, plot.length))

        x: plot.width / 2 - (shrink > 0 ? plot.sway * shrink : 0) - width / 2
        y: plot.height / 2 + (shrink > 0 ? plot.surge * shrink : 0) - height / 2
        width: 11
        height: 11
        radius: 5.5
        antialiasing: true
        color: Theme.accent
        border.width: 1.5
        border.color: Theme.chart
    }
}
