import QtQuick 2.15
import "Theme.js" as Theme

// Airspeed on a scale that is fine where light aircraft fly and reaches to where jets do.
//   speed   in `unit`, from 0; beyond the scale the hand rests at its end
Instrument {
    id: indicator

    property real speed: 0
    property string unit

    readonly property real fineEnd: 200
    readonly property real scaleEnd: 600

    function angleOf(speed) {
        return Math.min(speed, fineEnd) + Math.max(0, speed - fineEnd) * 0.3
    }

    function angles(from, to, step) {
        const result = []
        for (let speed = from; speed <= to; speed += step)
            result.push(angleOf(speed))
        return result
    }

    Marks {
        minor: indicator.angles(10, 190, 10).concat(indicator.angles(220, 580, 20))
        major: indicator.angles(40, 200, 40).concat(indicator.angles(300, 600, 100), 0)
        numerals: [40, 80, 120, 160, 200, "", 400, "", 600]
        numeralSize: 11
    }

    Label {
        x: indicator.middle - width / 2
        y: 45
        width: 44
        fits: true
        font.pixelSize: 10
        text: indicator.unit
    }

    Needle {
        x: indicator.middle
        y: indicator.middle
        rotation: indicator.angleOf(Math.min(indicator.speed, indicator.scaleEnd + 15))
        length: 49
        thickness: 4.5
        color: Theme.ink
    }

    Hub {}

    DigitWindow {
        x: indicator.middle - width / 2
        y: indicator.middle + 9
        width: 36
        text: indicator.speed > 9999 ? "–" : indicator.speed
    }
}
