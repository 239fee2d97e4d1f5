import QtQuick 2.15
import "Theme.js" as Theme

// The horizon as seen from the seat: it sinks as the nose rises, and turns against the bank.
//   pitch, roll   degrees, up and right positive; NaN and infinity show level flight
Instrument {
    id: indicator

    property real pitch: 0
    property real roll: 0

    readonly property real pixelsPerDegree: 1.55
    readonly property real window: 2 * faceRadius - 4
    readonly property real shownPitch: isNaN(pitch) ? 0 : Math.max(-90, Math.min(90, pitch))
    readonly property real shownRoll: isFinite(roll) ? roll % 360 : 0

    Item {
        anchors.centerIn: parent
        width: indicator.window
        height: width
        clip: true

        Item {
            anchors.fill: parent
            rotation: -indicator.shownRoll

            Rectangle {
                anchors.fill: parent
                antialiasing: true
                gradient: Gradient {
                    GradientStop { position: 0.0; color: Theme.skyHigh }
                    GradientStop { position: 0.5; color: Theme.sky }
                }
            }

            Rectangle {
                y: Math.max(0, Math.min(parent.height, ladder.y))
                width: parent.width
                height: parent.height - y
                antialiasing: true
                gradient: Gradient {
                    GradientStop { position: 0.0; color: Theme.ground }
                    GradientStop { position: 1.0; color: Theme.groundLow }
                }
            }

            Item {
                id: ladder

                x: parent.width / 2
                y: parent.height / 2 + indicator.shownPitch * indicator.pixelsPerDegree

                Rectangle {
                    x: -width / 2
                    y: -height / 2
                    width: indicator.window
                    height: 1.5
                    antialiasing: true
                    color: Theme.white
                }

                // Steeper lines are longer; the short ones are at 5 and 15 degrees.
                Repeater {
                    model: [5, 10, 15, 20, 30, 40, 50, 60, 70, 80]

                    Item {
                        readonly property real length: modelData < 20 && modelData % 10 === 5 ? 10
                            : 14 + modelData * 0.6

                        Rectangle {
                            x: -width / 2
                            y: -modelData * indicator.pixelsPerDegree - height / 2
                            width: parent.length
                            height: 1.4
                            antialiasing: true
                            color: Theme.white
                        }

                        Rectangle {
                            x: -width / 2
                            y: modelData * indicator.pixelsPerDegree - height / 2
                            width: parent.length
                            height: 1.4
                            antialiasing: true
                            color: Theme.white
                        }
                    }
                }
            }

            Marks {
                minor: [-20, -10, 10, 20, 45, -45]
                major: [-90, -60, -30, 0, 30, 60, 90]
                rim: indicator.faceRadius - 3
                color: Theme.white
                longMark: 8
                shortMark: 6
            }
        }

        // Draws the case again around the window, since a clip is square.
        Rectangle {
            anchors.centerIn: parent
            width: parent.width + 2 * border.width
            height: width
            radius: width / 2
            antialiasing: true
            color: "transparent"
            border.width: 32
            border.color: Theme.crackle
        }
    }

    Rectangle {
        anchors.centerIn: parent
        width: indicator.window + 4
        height: width
        radius: width / 2
        antialiasing: true
        color: "transparent"
        border.width: 4
        border.color: Theme.bezelEdge
    }

    // The aeroplane and the bank pointer.
    Repeater {
        model: 2

        Item {
            x: indicator.middle
            y: indicator.middle

            Rectangle {
                x: index === 0 ? -37 : 13
                y: -2.5
                width: 24
                height: 5
                radius: 1
                antialiasing: true
                color: Theme.accent
                border.width: 1
                border.color: Theme.black
            }
        }
    }

    Rectangle {
        anchors.centerIn: parent
        width: 7
        height: 7
        radius: 3.5
        antialiasing: true
        color: Theme.accent
        border.width: 1
        border.color: Theme.black
    }

    Needle {
        x: indicator.middle
        y: indicator.middle - indicator.faceRadius + 22
        length: 10
        thickness: 7
        color: Theme.accent
    }
}
