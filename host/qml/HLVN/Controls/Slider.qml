import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// A slider with limits under the names `minimumValue` and `maximumValue`. Values snap to steps.
// Nothing is clamped before all limits are known.
T.Slider {
    id: root

    property alias minimumValue: root.from
    property alias maximumValue: root.to

    implicitWidth: 120 * qt_scale
    implicitHeight: Math.round(24 * qt_scale)
    padding: handle.width / 2
    to: 1
    snapMode: T.Slider.SnapAlways
    hoverEnabled: true
    opacity: enabled ? 1 : 0.5
    Keys.onPressed: {
        const limit = event.key === Qt.Key_Home ? from : event.key === Qt.Key_End ? to : NaN
        if (!isNaN(limit)) {
            value = limit
            event.accepted = true
        }
    }

    background: Rectangle {
        x: root.leftPadding
        y: Math.round((root.height - height) / 2)
        width: root.availableWidth
        height: Math.round(4 * qt_scale)
        radius: height / 2
        color: ux.itemBackgroundColor2

        // From zero where the range has one inside, else from the beginning.
        Rectangle {
            readonly property real origin: root.from < 0 && root.to > 0
                                           ? -root.from / (root.to - root.from) : 0

            x: Math.min(origin, root.position) * parent.width
            width: Math.abs(root.position - origin) * parent.width
            height: parent.height
            radius: parent.radius
            color: ux.accentColor
        }
    }

    handle: Rectangle {
        x: root.leftPadding + root.position * root.availableWidth - width / 2
        y: Math.round((root.height - height) / 2)
        width: Math.round(16 * qt_scale)
        height: width
        radius: width / 2
        color: root.pressed ? ux.textDarkColor : ux.textLightColor

        FocusFrame {
            visible: root.activeFocus && root.focusReason !== Qt.MouseFocusReason
            radius: width / 2
        }
    }
}
