import QtQuick 2.15
import "qrc:/qml/HLVN/Controls" as HLVN

// Shows one message.
HLVN.Dialog {
    id: root

    property string message

    function show(newTitle, newMessage) {
        title = newTitle
        message = newMessage
        open()
    }

    objectName: "messageDialog"
    rejectText: qsTr("Close")

    HLVN.Label {
        objectName: "messageText"
        width: parent.width
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
        text: root.message
    }
}
