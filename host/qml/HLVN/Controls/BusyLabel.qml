import QtQuick 2.15

// A short text with a spinner.
Item {
    id: root

    property alias text: words.text

    implicitWidth: ring.width + ux.spacing + words.implicitWidth
    implicitHeight: words.implicitHeight

    Rectangle {
        id: ring

        anchors.verticalCenter: parent.verticalCenter
        width: 14 * qt_scale
        height: width
        radius: width / 2
        color: "transparent"
        border { width: 2; color: ux.itemBorderColor }

        Rectangle {
            width: 5 * qt_scale
            height: width
            radius: width / 2
            x: (parent.width - width) / 2
            y: -1
            color: ux.accentColor
        }

        RotationAnimator on rotation {
            running: root.visible
            from: 0
            to: 360
            duration: 1200
            loops: Animation.Infinite
        }
    }

    Label {
        id: words

        anchors { left: ring.right; leftMargin: ux.spacing; right: parent.right; verticalCenter: parent.verticalCenter }
        textFormat: Text.PlainText
        elide: Text.ElideMiddle
        color: ux.textDarkColor
        font.pixelSize: ux.h4FontSize
    }
}
