import QtQuick 2.15
import "Theme.js" as Theme

// Dims the dashboard while paused, with a badge over an item that means nothing then, such as the gear.
//   shown    dash_paused
//   badge    the item that the badge covers; null centres the badge
Item {
    id: veil

    property bool shown: false
    property Item badge: null

    readonly property real badgeWidth: badge ? badge.width : 64
    readonly property real badgeHeight: badge ? badge.height : 74

    anchors.fill: parent
    visible: shown

    Rectangle {
        anchors.fill: parent
        opacity: 0.565
        color: Theme.night
    }

    Rectangle {
        x: veil.badge ? veil.badge.x : (veil.width - width) / 2
        y: veil.badge ? veil.badge.y : (veil.height - height) / 2
        width: veil.badgeWidth
        height: veil.badgeHeight
        radius: 8
        antialiasing: true
        color: Theme.night
        border.width: 1.5
        border.color: Theme.metal

        Repeater {
            model: 2

            Rectangle {
                x: parent.width / 2 - 11 + 15 * index
                y: (parent.height - height) / 2 - 7
                width: 7
                height: Math.min(26, parent.height * 0.36)
                antialiasing: true
                color: Theme.ink
            }
        }

        Label {
            x: 3
            y: parent.height / 2 + Math.min(26, parent.height * 0.36) / 2
            width: parent.width - 6
            height: 14
            fits: true
            color: Theme.ink
            font.pixelSize: 12
            font.bold: true
            text: "PAUSED"
        }
    }
}
