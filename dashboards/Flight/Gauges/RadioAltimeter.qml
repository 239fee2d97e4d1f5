import QtQuick 2.15
import "Theme.js" as Theme

// Height above the ground, finer near it. Above the scale the hand hides and the window shows it.
//   feet
Instrument {
    id: altimeter

    property real feet: 0
    readonly property real scaleEnd: 2500
    readonly property bool known: Math.abs(feet) < 1000000

    // Degrees: half of the dial for the last 500 feet.
    function angleOf(feet) {
        const half = 155
        return feet <= 500 ? feet / 500 * half : half + (feet - 500) / (scaleEnd - 500) * half
    }

    function angles(from, to, step) {
        const result = []
        for (let feet = from; feet <= to; feet += step)
            result.push(angleOf(feet))
        return result
    }

    Marks {
        minor: altimeter.angles(20, 480, 20).concat(altimeter.angles(600, 2400, 100))
        major: altimeter.angles(0, 500, 100).concat(altimeter.angles(1000, 2500, 500))
        numerals: [0, 1, 2, 3, 4, 5, 10, 15, 20, 25]
        numeralSize: 12
    }

    Label {
        x: altimeter.middle - width / 2
        y: 44
        width: 50
        fits: true
        font.pixelSize: 10
        text: "RAD ALT"
    }

    Needle {
        x: altimeter.middle
        y: altimeter.middle
        visible: altimeter.feet <= altimeter.scaleEnd
        rotation: altimeter.angleOf(Math.max(-20, altimeter.feet))
        length: 49
        thickness: 4.5
        color: altimeter.feet < 100 ? Theme.caution : Theme.ink
    }

    Hub {}

    DigitWindow {
        width: 42
        x: altimeter.middle - width / 2
        y: altimeter.middle + 9
        text: altimeter.known ? String(altimeter.feet).replace("-", "−") : "–"
    }
}
