import QtQuick 2.15

// The bottom of a view: its dashboard's messages to the left, buttons to the right.
Item {
    id: root

    property alias buttons: row.data

    implicitHeight: row.height + 2 * ux.spacing

    DocumentMessages {
        anchors.left: parent.left
        anchors.leftMargin: ux.spacing
        anchors.right: row.left
        anchors.rightMargin: 2 * ux.spacing
        anchors.verticalCenter: parent.verticalCenter
    }

    Row {
        id: row

        anchors.right: parent.right
        anchors.rightMargin: ux.spacing
        anchors.verticalCenter: parent.verticalCenter
        spacing: ux.spacing
    }
}
