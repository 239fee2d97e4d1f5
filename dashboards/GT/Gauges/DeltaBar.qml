import QtQuick 2.15
import "Theme.js" as Theme

// A time difference as a bar from the middle: gains are green to the right, losses red to the
// left, with the number in between.
//   seconds, digits   dash_deltaTime_s and dash_deltaTime_str
//   known             whether there is a best lap to compare with; otherwise only the empty slots show
//   range             seconds at the end of each half
Item {
    id: delta

    property real seconds: 0
    property string digits
    property bool known: true
    property real range: 1
    readonly property real half: (width - 108) / 2

    implicitWidth: 464
    implicitHeight: 28

    Bar {
        y: 6
        width: delta.half
        height: parent.height - 12
        origin: 1
        value: delta.known && delta.seconds > 0 ? Math.max(0, 1 - delta.seconds / delta.range) : 1
        barColor: Theme.danger
    }

    Bar {
        x: delta.width - width
        y: 6
        width: delta.half
        height: parent.height - 12
        value: delta.known && delta.seconds < 0 ? -delta.seconds / delta.range : 0
        barColor: Theme.good
    }

    // At half and at the whole range.
    Repeater {
        model: [0.25, 0.5, 0.75]

        Item {
            Rectangle {
                x: delta.half * modelData
                y: 6
                width: 1
                height: delta.height - 12
                antialiasing: true
                color: Theme.night
            }

            Rectangle {
                x: delta.width - delta.half * modelData - 1
                y: 6
                width: 1
                height: delta.height - 12
                antialiasing: true
                color: Theme.night
            }
        }
    }

    DeltaTime {
        anchors.centerIn: parent
        width: 104
        height: parent.height
        font.pixelSize: 27
        known: delta.known
        seconds: delta.seconds
        digits: delta.digits
    }
}
