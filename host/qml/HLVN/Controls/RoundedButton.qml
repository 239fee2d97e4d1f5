import QtQuick 2.15
import QtQuick.Templates 2.15 as T

T.Button {
    id: root

    property bool primary: false // The default action.
    property bool danger: false  // Destroys something.
    property string toolTip

    implicitWidth: Math.max(64 * qt_scale, contentItem.implicitWidth + leftPadding + rightPadding)
    implicitHeight: ux.controlHeight
    leftPadding: 1.75 * ux.spacing
    rightPadding: leftPadding
    font.family: ux.primaryFontFamily
    font.pixelSize: ux.textFontSize
    hoverEnabled: true
    opacity: enabled ? 1 : 0.5
    Accessible.name: text
    Accessible.description: toolTip
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Label {
        text: root.text
        font: root.font
        color: root.primary || root.danger ? ux.accentTextColor : ux.textLightColor
        horizontalAlignment: root.flat ? Text.AlignLeft : Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }

    background: Rectangle {
        readonly property color base: root.danger ? ux.dangerColor
                                      : root.primary ? ux.accentColor : ux.itemBackgroundColor2

        radius: ux.radius
        color: root.down ? Qt.darker(base, 1.25) : root.hovered ? Qt.lighter(base, 1.2) : base
        border.width: root.primary || root.danger ? 0 : 1
        border.color: ux.itemBorderColor

        FocusFrame {
            visible: root.activeFocus && root.focusReason !== Qt.MouseFocusReason
        }
    }

    ToolTip {
        text: root.toolTip
        hovered: root.hovered
        pressed: root.down
    }
}
