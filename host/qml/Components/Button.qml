import QtQuick 2.15
import "../HLVN/Controls"

// A flat button for an icon. Children are placed inside.
Rectangle {
    id: root

    property string toolTip
    readonly property alias containsMouse: area.containsMouse

    signal clicked

    activeFocusOnTab: true
    color: area.pressed ? ux.pressedColor : area.containsMouse ? ux.hoverColor
                                                                : ux.itemBackgroundColor
    Accessible.role: Accessible.Button
    Accessible.name: toolTip
    Accessible.onPressAction: clicked()
    Keys.onSpacePressed: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    // Gets mouse events even just after the button was hidden.
    MouseArea {
        id: area

        anchors.fill: parent
        hoverEnabled: true
        onClicked: root.clicked()
    }

    FocusFrame {
        visible: root.activeFocus
    }

    ToolTip {
        text: root.toolTip
        hovered: area.containsMouse && root.visible
        pressed: area.pressed
    }
}
