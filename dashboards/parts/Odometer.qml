import QtQuick 2.15
import "Theme.js" as Theme

// A count on drums behind one window. Counts too large for the drums show as nines.
//   value, drums
Rectangle {
    id: odometer

    property real value: 0
    property int drums: 3
    readonly property string digits: String(Math.max(0, Math.min(Math.pow(10, drums) - 1, value)))

    width: row.width + 4
    height: row.height + 4
    radius: 3
    antialiasing: true
    color: Theme.bezelEdge
    border.width: 1
    border.color: Theme.metal

    Row {
        id: row

        x: 2
        y: 2
        spacing: 1

        Repeater {
            model: odometer.drums

            Rectangle {
                readonly property int place: index - odometer.drums + odometer.digits.length
                readonly property bool leading: place < 0

                width: 15
                height: 22
                gradient: Gradient {
                    GradientStop { position: 0.0; color: Theme.faceBottom }
                    GradientStop { position: 0.5; color: Theme.metal }
                    GradientStop { position: 1.0; color: Theme.faceBottom }
                }

                Label {
                    anchors.fill: parent
                    color: parent.leading ? Theme.faint : Theme.ink
                    font.pixelSize: 18
                    font.bold: true
                    text: parent.leading ? "0" : odometer.digits.charAt(parent.place)
                }
            }
        }
    }
}
