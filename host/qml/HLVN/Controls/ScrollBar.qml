import QtQuick 2.15
import QtQuick.Templates 2.15 as T

T.ScrollBar {
    id: root

    implicitWidth: 10 * qt_scale
    implicitHeight: 10 * qt_scale
    padding: 2 * qt_scale
    minimumSize: 0.06
    visible: size < 1

    contentItem: Rectangle {
        implicitWidth: 6 * qt_scale
        implicitHeight: 6 * qt_scale
        radius: Math.min(width, height) / 2
        color: root.pressed || root.hovered ? ux.textDarkColor : ux.itemBorderColor
    }
}
