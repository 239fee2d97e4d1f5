import QtQuick 2.15
import "Theme.js" as Theme

// Engine speed as a share of its limit, above a scale with the thresholds.
//   share        dash_rpmPercent, which is 1 at the limit
//   thresholds   percent, each with its colour
//   flash        dash_rpmBlink
Item {
    id: revScale

    property real share: 0
    property var thresholds: []
    property var colors: []
    property bool flash: false

    implicitWidth: 200
    implicitHeight: 18

    Bar {
        y: 0
        width: parent.width
        height: 12
        corner: 1
        value: revScale.share
        barColor: revScale.flash ? Theme.flash : Theme.ink
    }

    Repeater {
        model: revScale.thresholds.length

        Rectangle {
            readonly property real percent: revScale.thresholds[index]

            x: Math.min(100, percent) / 100 * revScale.width - 1
            y: 11
            width: 2.5
            height: 7
            antialiasing: true
            visible: percent > 0
            color: revScale.colors[index]
        }
    }
}
