import QtQuick 2.15
import "Theme.js" as Theme

// A tape with slanting stripes.
Rectangle {
    id: tape

    property color stripe: Theme.black

    implicitHeight: 26
    color: Theme.yellow
    clip: true

    Repeater {
        model: Math.ceil(tape.width / 40) + 1

        Rectangle {
            x: index * 40 - 20
            y: -tape.height
            width: 20
            height: 3 * tape.height
            rotation: 40
            antialiasing: true
            color: tape.stripe
        }
    }
}
