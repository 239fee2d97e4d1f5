import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import "../HLVN/Controls"

// The dashboard's newest message. A press opens the list of all.
T.AbstractButton {
    id: root

    readonly property var messages: qt_window.messages

    objectName: "documentMessages"
    implicitHeight: ux.controlHeight
    leftPadding: ux.spacing
    rightPadding: ux.spacing
    visible: messages.length > 0
    hoverEnabled: true
    text: messages.length > 0 ? messages[messages.length - 1] : ""
    Accessible.name: qsTr("Dashboard message: %1").arg(text)
    onClicked: list.open()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Label {
        text: root.text
        // Only one line of it.
        maximumLineCount: 1
        wrapMode: Text.WrapAnywhere
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        color: root.hovered ? ux.textLightColor : ux.textDarkColor
    }

    background: Rectangle {
        radius: ux.radius
        color: root.hovered || list.visible ? ux.itemBackgroundColor2 : ux.itemBackgroundColor

        FocusFrame {
            visible: root.activeFocus && root.focusReason !== Qt.MouseFocusReason
        }
    }

    ToolTip {
        hovered: root.hovered
        pressed: root.down
        text: qsTr("Show all messages from this dashboard")
    }

    Connections {
        target: cpp_viewModel
        ignoreUnknownSignals: true
        function onPathChanged() { qt_window.clearMessages() }
    }

    T.Popup {
        id: list

        y: -height - ux.spacing / 2
        width: root.width
        height: Math.min(page.contentHeight + 2 * padding, 240 * qt_scale)
        padding: ux.spacing / 2
        margins: ux.spacing / 2
        focus: true
        closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
        onOpened: page.contentY = page.contentHeight - page.height
        onClosed: root.forceActiveFocus(root.focusReason)

        contentItem: FlickableV {
            id: page

            contentHeight: text.height + ux.spacing
            focus: true

            TextEdit {
                id: text

                x: ux.spacing / 2
                y: ux.spacing / 2
                width: page.width - 2 * ux.spacing
                readOnly: true
                selectByMouse: true
                textFormat: TextEdit.PlainText
                wrapMode: TextEdit.WrapAtWordBoundaryOrAnywhere
                font.family: ux.primaryFontFamily
                font.pixelSize: ux.textFontSize
                color: ux.textLightColor
                selectionColor: ux.accentColor
                selectedTextColor: ux.accentTextColor
                text: root.messages.join("\n")
            }
        }

        background: Rectangle {
            radius: ux.radius
            color: ux.itemBackgroundColor
            border.color: ux.itemBorderColor
        }
    }
}
