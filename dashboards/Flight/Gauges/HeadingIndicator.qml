import QtQuick 2.15
import "Theme.js" as Theme

// A compass card that turns under the lubber line, with a fixed aeroplane.
//   heading   degrees, clockwise from north
Instrument {
    id: indicator

    property real heading: 0
    readonly property real shownHeading: isFinite(heading) ? heading % 360 : 0

    function every(step, offset) {
        const result = []
        for (let angle = offset; angle < 360; angle += step)
            result.push(angle)
        return result
    }

    Item {
        anchors.fill: parent
        rotation: -indicator.shownHeading

        Marks {
            minor: indicator.every(30, 10).concat(indicator.every(30, 20))
            shortMark: 5
        }

        Marks {
            major: [0, 90, 180, 270]
            numerals: ["N", "E", "S", "W"]
            turning: true
            numeralSize: 13
            longMark: 7
        }

        Marks {
            major: [30, 60, 120, 150, 210, 240, 300, 330]
            numerals: [3, 6, 12, 15, 21, 24, 30, 33]
            turning: true
            numeralSize: 11
            longMark: 7
        }
    }

    Needle {
        x: indicator.middle
        y: 15
        length: 12
        thickness: 8
        rotation: 180
        transform: Translate { y: -12 }
        color: Theme.accent
    }

    // The aeroplane from above.
    Item {
        x: indicator.middle
        y: indicator.middle

        Repeater {
            model: [{ w: 4, h: 34, y: -16 }, { w: 34, h: 4, y: -4 }, { w: 14, h: 3, y: 12 }]

            Rectangle {
                x: -width / 2
                y: modelData.y
                width: modelData.w
                height: modelData.h
                radius: 2
                antialiasing: true
                color: Theme.accent
            }
        }
    }
}
