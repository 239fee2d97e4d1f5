import QtQuick 2.15
import "HLVN/Controls" as HLVN

// A message with an optional action button.
Rectangle {
    id: root

    property color stripe: ux.accentColor
    property alias text: label.text
    property alias action: button.text

    signal triggered

    implicitHeight: Math.max(label.implicitHeight, button.visible ? button.height : 0)
                    + 2 * ux.spacing
    radius: ux.radius
    color: ux.itemBackgroundColor

    Rectangle {
        width: 3 * qt_scale
        height: parent.height
        radius: width / 2
        color: root.stripe
    }

    HLVN.LabelMultiLine {
        id: label

        anchors.verticalCenter: parent.verticalCenter
        anchors.left: parent.left
        anchors.leftMargin: 2 * ux.spacing
        anchors.right: button.visible ? button.left : parent.right
        anchors.rightMargin: ux.spacing
        textFormat: Text.PlainText
    }

    HLVN.RoundedButton {
        id: button

        anchors.verticalCenter: parent.verticalCenter
        anchors.right: parent.right
        anchors.rightMargin: ux.spacing
        visible: text !== ""
        primary: true
        onClicked: root.triggered()
    }
}
