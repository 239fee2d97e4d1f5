import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// A slider with limits under the names `minimumValue` and `maximumValue`. Values snap to steps.
// Nothing is clamped before all limits are known. An arrow moves it by about a hundredth of its
// range, with Shift by one step; the page keys move it ten times as far.
T.Slider {
    id: root

    property alias minimumValue: root.from
    property alias maximumValue: root.to
    readonly property real keyStep:
        Math.max(stepSize, Math.pow(10, Math.round(Math.log10(Math.max(to - from, 1) / 100))))

    // In whole steps, within the limits.
    function moveTo(wanted) {
        const inSteps = stepSize > 0 ? Math.round(wanted / stepSize) * stepSize : wanted
        value = Math.max(from, Math.min(inSteps, to))
    }

    implicitWidth: 120 * qt_scale
    implicitHeight: Math.round(24 * qt_scale)
    padding: handle.width / 2
    to: 1
    snapMode: T.Slider.SnapAlways
    hoverEnabled: true
    opacity: enabled ? 1 : 0.5
    Keys.onPressed: {
        const arrow = event.modifiers & Qt.ShiftModifier ? stepSize : keyStep
        event.accepted = true
        switch (event.key) {
        case Qt.Key_Left:
            moveTo(value - arrow)
            break
        case Qt.Key_Right:
            moveTo(value + arrow)
            break
        case Qt.Key_PageDown:
            moveTo(value - 10 * keyStep)
            break
        case Qt.Key_PageUp:
            moveTo(value + 10 * keyStep)
            break
        case Qt.Key_Home:
            moveTo(from)
            break
        case Qt.Key_End:
            moveTo(to)
            break
        default:
            event.accepted = false
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
