import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// A modal dialog in the middle of its window: a title, the content, and one or two buttons.
// Escape and the second button close it; the first one emits `acceptClicked`.
T.Dialog {
    id: root

    property string acceptText: "" // Empty for a dialog that only informs.
    property string rejectText: qsTr("Cancel")
    property string busyText: ""   // What it waits for, shown beside the buttons.
    property bool acceptEnabled: true
    property bool dangerous: false

    signal acceptClicked

    parent: T.Overlay.overlay
    x: Math.round((parent.width - width) / 2)
    y: Math.round((parent.height - height) / 2)
    width: Math.min(460 * qt_scale, parent.width - ux.spacing * 4)
    height: Math.min(implicitHeight, parent.height - ux.spacing * 4)
    implicitHeight: header.implicitHeight + contentHeight + footer.implicitHeight + topPadding + bottomPadding
    contentHeight: contentChildren.length > 0 ? contentChildren[0].implicitHeight : 0
    padding: ux.spacing * 2.5
    topPadding: ux.spacing * 1.5
    bottomPadding: ux.spacing * 1.5
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape

    T.Overlay.modal: Rectangle {
        color: ux.shadeColor
    }

    background: Rectangle {
        radius: ux.radius * 1.5
        color: ux.itemBackgroundColor
        border { width: 1; color: ux.itemBorderColor }
    }

    header: Label {
        padding: root.padding
        bottomPadding: 0
        text: root.title
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        maximumLineCount: 3
        elide: Text.ElideRight
        font { pixelSize: ux.h3FontSize; weight: Font.Bold }
    }

    footer: Item {
        implicitHeight: buttons.height + root.padding

        BusyLabel {
            anchors {
                left: parent.left
                leftMargin: root.padding
                right: buttons.left
                rightMargin: ux.spacing
                verticalCenter: buttons.verticalCenter
            }
            visible: root.busyText !== ""
            text: root.busyText
        }

        Row {
            id: buttons

            anchors { right: parent.right; rightMargin: root.padding }
            spacing: ux.spacing

            RoundedButton {
                objectName: "accept"
                visible: root.acceptText !== ""
                enabled: root.acceptEnabled
                text: root.acceptText
                primary: !root.dangerous
                danger: root.dangerous
                onClicked: root.acceptClicked()
            }

            RoundedButton {
                objectName: "reject"
                focus: true
                text: root.busyText !== "" ? qsTr("Hide") : root.rejectText
                onClicked: root.close()
            }
        }
    }
}
