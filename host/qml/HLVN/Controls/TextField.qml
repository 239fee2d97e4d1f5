import QtQuick 2.15
import QtQuick.Templates 2.15 as T

T.TextField {
    id: root

    implicitWidth: 200 * qt_scale
    implicitHeight: ux.controlHeight
    leftPadding: ux.spacing
    rightPadding: ux.spacing
    verticalAlignment: Text.AlignVCenter
    color: enabled ? ux.textLightColor : ux.textDisabledColor
    placeholderTextColor: ux.textDisabledColor
    selectionColor: ux.accentColor
    selectedTextColor: ux.accentTextColor
    selectByMouse: true
    font.family: ux.primaryFontFamily
    font.pixelSize: ux.textFontSize

    Label {
        x: root.leftPadding
        width: root.width - root.leftPadding - root.rightPadding
        height: root.height
        visible: root.text === "" && root.preeditText === ""
        text: root.placeholderText
        color: root.placeholderTextColor
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }

    background: Rectangle {
        radius: ux.radius
        color: ux.itemBackgroundColor3
        border.width: root.activeFocus ? ux.focusWidth : 1
        border.color: root.activeFocus ? ux.focusColor : ux.itemBorderColor
    }
}
