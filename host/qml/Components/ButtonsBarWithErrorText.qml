import QtQuick 2.15
import "../HLVN/Controls"

// The bottom of a window: an error to the left, if there is one, and buttons to the right.
Item {
    id: root

    property alias buttons: row.data
    property string errorText

    implicitHeight: row.height + 2 * ux.spacing

    Label {
        anchors.left: parent.left
        anchors.right: row.left
        anchors.margins: ux.spacing
        anchors.verticalCenter: parent.verticalCenter
        text: root.errorText
        color: ux.dangerColor
        elide: Text.ElideRight
    }

    Row {
        id: row

        anchors.right: parent.right
        anchors.rightMargin: ux.spacing
        anchors.verticalCenter: parent.verticalCenter
        spacing: ux.spacing
    }
}
