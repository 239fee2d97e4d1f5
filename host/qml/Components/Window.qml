import QtQuick 2.15
import "../HLVN/Controls"

// The frame of a view: a header with its name and its help, the content, and a bar at the bottom.
// Closing by the window's own frame counts as `closeClicked`, too.
Rectangle {
    id: root

    property string title
    property bool helpButtonVisible: false
    property bool minimizeButtonVisible: true
    property Item content
    property Item bottomPanel
    default property list<QtObject> objects

    signal helpClicked
    signal closeClicked

    color: ux.windowBackground
    onTitleChanged: qt_window.setTitle(title)
    onMinimizeButtonVisibleChanged: qt_window.setCanBeMinimized(minimizeButtonVisible)
    onContentChanged: content.parent = contentArea
    onBottomPanelChanged: {
        bottomPanel.parent = bottomArea
        bottomPanel.anchors.fill = bottomArea
    }

    Rectangle {
        id: header

        width: parent.width
        height: Math.round(44 * qt_scale)
        color: ux.itemBackgroundColor

        Label {
            anchors.left: parent.left
            anchors.leftMargin: 2 * ux.spacing
            anchors.verticalCenter: parent.verticalCenter
            text: root.title
            font.pixelSize: ux.h2FontSize
        }

        RoundedButton {
            id: helpButton

            anchors.right: parent.right
            anchors.rightMargin: ux.spacing
            anchors.verticalCenter: parent.verticalCenter
            visible: root.helpButtonVisible
            text: qsTr("Help")
            toolTip: qsTr("Open the guide (F1)")
            onClicked: root.helpClicked()
        }
    }

    Item {
        id: contentArea

        anchors.top: header.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: bottomArea.top
    }

    Item {
        id: bottomArea

        width: parent.width
        height: root.bottomPanel ? root.bottomPanel.implicitHeight : 0
        anchors.bottom: parent.bottom
    }

    Shortcut {
        sequence: StandardKey.HelpContents
        enabled: root.helpButtonVisible
        onActivated: root.helpClicked()
    }

    Connections {
        target: qt_window
        function onCloseRequested() { root.closeClicked() }
    }
}
