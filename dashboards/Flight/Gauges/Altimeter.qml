import QtQuick 2.15
import "Theme.js" as Theme

// Altitude with a hand for hundreds, one for thousands and a mark at the rim for tens of thousands.
//   feet
Instrument {
    id: altimeter

    property real feet: 0
    readonly property bool known: Math.abs(feet) < 1000000

    // A hand that goes round once in `turn` feet.
    function angleIn(turn) {
        return known ? feet % turn / turn * 360 : 0
    }

    // The angles of the fifty marks: those with a numeral, or those between.
    function steps(numbered) {
        const result = []
        for (let i = 0; i < 50; ++i) {
            if ((i % 5 === 0) === numbered)
                result.push(i * 7.2)
        }
        return result
    }

    Marks {
        minor: altimeter.steps(false)
        major: altimeter.steps(true)
        numerals: [0, 1, 2, 3, 4, 5, 6, 7, 8, 9]
        numeralSize: 14
    }

    Label {
        x: altimeter.middle - width / 2
        y: 43
        width: 32
        fits: true
        font.pixelSize: 10
        text: "FEET"
    }

    Item {
        anchors.fill: parent
        rotation: altimeter.angleIn(100000)

        Rectangle {
            x: altimeter.middle - width / 2
            y: 9
            width: 7
            height: 7
            rotation: 45
            antialiasing: true
            color: Theme.accent
        }
    }

    Needle {
        x: altimeter.middle
        y: altimeter.middle
        rotation: altimeter.angleIn(10000)
        length: 34
        thickness: 8
        color: Theme.ink
    }

    Needle {
        x: altimeter.middle
        y: altimeter.middle
        rotation: altimeter.angleIn(1000)
        length: 50
        thickness: 4
        color: Theme.ink
    }

    Hub {}

    DigitWindow {
        x: altimeter.middle - width / 2
        y: altimeter.middle + 9
        text: altimeter.known ? String(altimeter.feet).replace("-", "−") : "–"
    }
}
