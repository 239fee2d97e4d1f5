import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// A tool tip for its parent, hidden once that is pressed.
T.ToolTip {
    id: root

    property bool hovered: false
    property bool pressed: false
    property bool pressedSince: false // Since the mouse came.

    visible: hovered && !pressedSince && text !== ""
    onPressedChanged: if (pressed) pressedSince = true
    onHoveredChanged: if (!hovered) pressedSince = false
    x: parent ? Math.round((parent.width - implicitWidth) / 2) : 0
    y: parent ? parent.height + ux.spacing / 2 : 0
    implicitWidth: Math.min(contentItem.implicitWidth + leftPadding + rightPadding, 360 * qt_scale)
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    margins: ux.spacing / 2
    padding: ux.spacing * 0.75
    delay: ux.toolTipDelay
    timeout: 10000
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent

    contentItem: Label {
        text: root.text
        font.pixelSize: ux.h4FontSize
        wrapMode: Text.Wrap
    }

    background: Rectangle {
        color: ux.itemBackgroundColor2
        radius: ux.radius
        border.color: ux.itemBorderColor
    }
}
