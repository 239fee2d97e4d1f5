import QtQuick 2.15
import "Theme.js" as Theme

// A wheel: the tyre's temperature as its colour and in figures, its wear as the level inside,
// pressure and brake temperature beside it. What isn't known is left out.
//   temp, pressure, brakeTemp, wear     °C, in the unit of `pressureUnit`, °C, percent
//   tempKnown, pressureKnown, brakeTempKnown, wearKnown   the availability twins
//   slipping    dash_wheelSlip_*: the tyre gets a bright rim
//   mirrored    the figures stand left of the tyre, for a wheel on the left of the picture
//   coldBelow, hotAbove, brakeHotAbove   °C
//   tempSize, detailSize
Item {
    id: corner

    property int temp: 0
    property bool tempKnown: true
    property real pressure: 0
    property bool pressureKnown: true
    property string pressureUnit: "kPa"
    property int brakeTemp: 0
    property bool brakeTempKnown: true
    property int wear: 0
    property bool wearKnown: true
    property bool slipping: false
    property bool mirrored: false
    property int coldBelow: 70
    property int hotAbove: 105
    property int brakeHotAbove: 750
    property int tempSize: 20
    property int detailSize: 11

    readonly property color tone: !tempKnown ? Theme.metal
        : temp < coldBelow ? Theme.cold : temp > hotAbove ? Theme.danger : Theme.good
    readonly property real figuresX: mirrored ? 0 : tyre.width + 6
    readonly property real figuresWidth: width - tyre.width - 6
    readonly property int side: mirrored ? Text.AlignRight : Text.AlignLeft

    // Without a sensor there is no value.
    function figure(value) {
        return Math.abs(value) > 9999 ? "–" : Math.round(value)
    }

    implicitWidth: 88
    implicitHeight: 50

    Rectangle {
        id: tyre

        x: corner.mirrored ? corner.width - width : 0
        width: Math.round(corner.height * 0.48)
        height: corner.height
        radius: width * 0.25
        antialiasing: true
        color: Theme.faceTop
        border.width: 2
        border.color: corner.slipping ? Theme.white : corner.tone

        Rectangle {
            readonly property real worn: corner.wear > 0 ? Math.min(1, corner.wear / 100) : 0
            readonly property real room: tyre.height - 8

            anchors.horizontalCenter: parent.horizontalCenter
            y: 4 + room - height
            width: tyre.width - 8
            height: corner.wearKnown ? room * (1 - worn) : room
            radius: Math.min(tyre.radius - 3, height / 2)
            antialiasing: true
            color: corner.tone
            opacity: corner.slipping ? 1 : 0.75
        }
    }

    Label {
        x: corner.figuresX
        width: corner.figuresWidth
        height: corner.tempSize
        horizontalAlignment: corner.side
        visible: corner.tempKnown
        fits: true
        color: Theme.ink
        font.pixelSize: corner.tempSize
        font.bold: true
        text: corner.figure(corner.temp) + "°"
    }

    Label {
        x: corner.figuresX
        y: corner.tempSize + 2
        width: corner.figuresWidth
        height: corner.detailSize + 2
        horizontalAlignment: corner.side
        visible: corner.pressureKnown
        fits: true
        font.pixelSize: corner.detailSize
        text: corner.figure(corner.pressure) + " " + corner.pressureUnit
    }

    Label {
        x: corner.figuresX
        y: corner.tempSize + corner.detailSize + 5
        width: corner.figuresWidth
        height: corner.detailSize + 2
        horizontalAlignment: corner.side
        visible: corner.brakeTempKnown
        fits: true
        color: corner.brakeTemp > corner.brakeHotAbove ? Theme.caution : Theme.muted
        font.pixelSize: corner.detailSize
        text: "BRK " + corner.figure(corner.brakeTemp) + "°"
    }
}
