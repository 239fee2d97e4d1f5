import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// A menu item with its shortcut at the right. A disabled one says why in a tool tip.
T.MenuItem {
    id: root

    property string shortcut: ""
    property string reason: "" // Shown under the pointer while the entry is disabled.

    implicitWidth: parent ? parent.width : 200 * qt_scale
    implicitHeight: 34 * qt_scale
    leftPadding: ux.spacing
    rightPadding: ux.spacing
    Accessible.description: enabled ? "" : reason

    contentItem: Item {
        Label {
            anchors { left: parent.left; right: key.left; verticalCenter: parent.verticalCenter }
            text: root.text
            textFormat: Text.PlainText
            elide: Text.ElideRight
            color: root.enabled ? ux.textLightColor : ux.textDisabledColor
        }

        Label {
            id: key

            anchors { right: parent.right; verticalCenter: parent.verticalCenter }
            text: root.shortcut
            color: root.enabled ? ux.textDarkColor : ux.textDisabledColor
            font.pixelSize: ux.h4FontSize
        }
    }

    background: Rectangle {
        radius: ux.radius / 2
        color: root.highlighted ? ux.itemBackgroundColor2 : "transparent"

        // A disabled control gets no hover of its own.
        MouseArea {
            id: hover

            anchors.fill: parent
            hoverEnabled: true
            acceptedButtons: Qt.NoButton
        }
    }

    ToolTip {
        hovered: !root.enabled && hover.containsMouse
        text: root.reason
    }
}
