import QtQuick 2.15
import QtQuick.Templates 2.15 as T

T.CheckBox {
    id: root

    implicitWidth: indicator.width + spacing + contentItem.implicitWidth
    implicitHeight: Math.round(24 * qt_scale)
    spacing: ux.spacing
    font.family: ux.primaryFontFamily
    font.pixelSize: ux.textFontSize
    hoverEnabled: true
    opacity: enabled ? 1 : 0.5

    indicator: Rectangle {
        y: Math.round((root.height - height) / 2)
        width: Math.round(18 * qt_scale)
        height: width
        radius: 4 * qt_scale
        color: root.checked ? ux.accentColor : ux.itemBackgroundColor3
        border.color: root.checked ? ux.accentColor : root.hovered ? ux.textDarkColor
                                                                  : ux.itemBorderColor

        // A tick of two strokes.
        Item {
            anchors.centerIn: parent
            anchors.verticalCenterOffset: -parent.height * 0.06
            width: parent.width * 0.34
            height: parent.height * 0.62
            rotation: 42
            visible: root.checked

            Rectangle {
                anchors.bottom: parent.bottom
                width: parent.width
                height: 2 * qt_scale
                color: ux.accentTextColor
            }

            Rectangle {
                anchors.right: parent.right
                width: 2 * qt_scale
                height: parent.height
                color: ux.accentTextColor
            }
        }

        FocusFrame {
            visible: root.activeFocus && root.focusReason !== Qt.MouseFocusReason
        }
    }

    contentItem: Label {
        leftPadding: root.indicator.width + root.spacing
        text: root.text
        font: root.font
        verticalAlignment: Text.AlignVCenter
    }
}
