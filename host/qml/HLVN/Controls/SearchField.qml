import QtQuick 2.15

// A text field that Escape clears. Down, Return, or Escape in an empty one give up the focus.
TextField {
    id: root

    property string toolTip

    signal finished

    rightPadding: cross.width
    hoverEnabled: true
    Accessible.role: Accessible.EditableText
    Accessible.name: placeholderText
    Keys.onEscapePressed: {
        if (text === "")
            finished()
        else
            clear()
    }
    Keys.onDownPressed: finished()
    Keys.onReturnPressed: finished()
    Keys.onEnterPressed: finished()

    ToolTip {
        hovered: root.hovered && !root.activeFocus
        text: root.toolTip
    }

    Label {
        id: cross

        anchors { right: parent.right; top: parent.top; bottom: parent.bottom }
        width: height
        visible: root.text !== ""
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        text: "\u00d7"
        color: area.containsMouse ? ux.textLightColor : ux.textDarkColor
        Accessible.role: Accessible.Button
        Accessible.name: qsTr("Clear")
        Accessible.onPressAction: root.clear()

        MouseArea {
            id: area

            anchors.fill: parent
            hoverEnabled: true
            cursorShape: Qt.ArrowCursor
            onClicked: root.clear()
        }
    }
}
