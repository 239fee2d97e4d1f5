import QtQuick 2.15
import QtQuick.Templates 2.15 as T

T.MenuSeparator {
    implicitWidth: parent ? parent.width : 200 * qt_scale
    implicitHeight: ux.spacing + 1
    contentItem: Item {
        Rectangle {
            anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter }
            height: 1
            color: ux.itemBorderColor
        }
    }
}
