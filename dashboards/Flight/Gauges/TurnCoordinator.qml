import QtQuick 2.15
import "Theme.js" as Theme

// The rate of turn that this bank gives at this speed, shown as the tilt of an aeroplane from behind,
// and the ball in its tube. A wing at a lower mark is a full circle in two minutes.
//   roll    degrees, right positive
//   speed   km/h
//   ball    -1 (left end of the tube) to 1
Instrument {
    id: coordinator

    property real roll: 0
    property real speed: 0
    property real ball: 0

    readonly property real standardRate: 3 // Degrees per second.
    readonly property real standardTilt: 20
    readonly property real rate: {
        const bank = roll * Math.PI / 180
        // A steeper bank needs more lift; at 90 degrees none is left.
        const aside = 9.81 * Math.sin(bank) / Math.max(0.2, Math.cos(bank))
        // Wings give no lift at walking speed.
        return speed < 20 ? 0 : aside / (speed / 3.6) * 180 / Math.PI
    }
    readonly property real tilt: isFinite(rate)
        ? Math.max(-1.6, Math.min(1.6, rate / standardRate)) * standardTilt : 0
    readonly property real shownBall: isNaN(ball) ? 0 : Math.max(-1, Math.min(1, ball))

    Marks {
        major: [90, 90 + coordinator.standardTilt, 270, 270 - coordinator.standardTilt]
        rim: coordinator.faceRadius - 3
    }

    Label {
        x: 20
        y: coordinator.middle + 24
        color: Theme.ink
        font.pixelSize: 12
        font.bold: true
        text: "L"
    }

    Label {
        x: coordinator.width - width - 20
        y: coordinator.middle + 24
        color: Theme.ink
        font.pixelSize: 12
        font.bold: true
        text: "R"
    }

    Label {
        anchors.horizontalCenter: parent.horizontalCenter
        y: 20
        font.pixelSize: 10
        text: "TURN"
    }

    Label {
        anchors.horizontalCenter: parent.horizontalCenter
        y: coordinator.height - 24
        font.pixelSize: 10
        text: "2 MIN"
    }

    Item {
        anchors.fill: parent
        rotation: coordinator.tilt

        Rectangle {
            x: coordinator.middle - width / 2
            y: coordinator.middle - 22
            width: 4
            height: 22
            radius: 2
            antialiasing: true
            color: Theme.ink
        }

        Rectangle {
            x: coordinator.middle - width / 2
            y: coordinator.middle - 16
            width: 24
            height: 3
            radius: 1.5
            antialiasing: true
            color: Theme.ink
        }

        Rectangle {
            x: coordinator.middle - width / 2
            y: coordinator.middle - 2.5
            width: 88
            height: 5
            radius: 2.5
            antialiasing: true
            color: Theme.ink
        }

        Rectangle {
            anchors.centerIn: parent
            width: 16
            height: 16
            radius: 8
            antialiasing: true
            color: Theme.ink
        }
    }

    // The tube is a piece of a ring, whose middle lies far above.
    Item {
        id: tube

        readonly property real ringRadius: 100

        x: coordinator.middle - width / 2
        y: coordinator.middle + 19
        width: 62
        height: 20
        clip: true

        Rectangle {
            x: tube.width / 2 - tube.ringRadius
            y: tube.height - 2 * tube.ringRadius
            width: 2 * tube.ringRadius
            height: width
            radius: tube.ringRadius
            antialiasing: true
            color: "transparent"
            border.width: 15
            border.color: "#d9d2b4"
        }

        Item {
            x: tube.width / 2
            y: tube.height - tube.ringRadius
            rotation: -coordinator.shownBall * 13

            Rectangle {
                x: -6.5
                y: tube.ringRadius - 14
                width: 13
                height: 13
                radius: 6.5
                antialiasing: true
                color: Theme.black
            }
        }

        Repeater {
            model: [-8, 8]

            Rectangle {
                x: tube.width / 2 + modelData - width / 2
                width: 1.5
                height: tube.height
                antialiasing: true
                color: Theme.black
            }
        }
    }
}
