import QtQuick 2.15

Rectangle {
    id: root

    property string toolTip
    readonly property alias containsMouse: area.containsMouse

    signal clicked

    MouseArea {
        id: area

        anchors.fill: parent
        hoverEnabled: true
        onClicked: root.clicked()
    }
}
