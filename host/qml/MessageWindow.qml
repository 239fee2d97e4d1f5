import QtQuick 2.15
import "HLVN/Controls"

// A message and a button that closes it.
Rectangle {
    id: root

    color: ux.windowBackground

    LabelMultiLine {
        anchors.top: parent.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: button.top
        anchors.margins: 2 * ux.spacing
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.WrapAtWordBoundaryOrAnywhere
        elide: Text.ElideRight
        text: qt_window.message
    }

    RoundedButton {
        id: button

        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: 2 * ux.spacing
        focus: true
        primary: true
        text: qsTr("OK")
        onClicked: qt_window.close()
    }

    Shortcut {
        sequence: StandardKey.Cancel
        onActivated: qt_window.close()
    }

    Component.onCompleted: {
        qt_window.minimumWidth = 320 * qt_scale
        qt_window.minimumHeight = 140 * qt_scale
        qt_window.setInitialSize(480 * qt_scale, 180 * qt_scale)
    }
}
