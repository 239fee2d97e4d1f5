import QtQuick 2.15
import "Theme.js" as Theme

// The gear in a frame.
//   text     dash_gear_str
//   redline  whether the frame turns red
//   flash    whether the plate is filled, dash_rpmBlink
//   size     of the character
Rectangle {
    id: plate

    property string text
    property bool redline: false
    property bool flash: false
    property int size: Math.round(height * 0.9)

    implicitWidth: 52
    implicitHeight: 74
    radius: 8
    antialiasing: true
    gradient: Gradient {
        GradientStop { position: 0.0; color: plate.flash ? Theme.danger : Theme.faceTop }
        GradientStop { position: 1.0; color: plate.flash ? Theme.danger : Theme.faceBottom }
    }
    border.width: 1.5
    border.color: redline ? Theme.danger : Theme.metal

    Label {
        anchors.fill: parent
        anchors.leftMargin: 3
        anchors.rightMargin: 3
        fits: true
        color: Theme.ink
        font.pixelSize: plate.size
        font.bold: true
        text: plate.text
    }
}
