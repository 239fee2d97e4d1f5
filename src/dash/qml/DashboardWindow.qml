import QtQuick 2.15
import "qrc:/qml/Components"
import "qrc:/qml/HLVN/Controls" as HLVN
import "qrc:/qml/HLVN/Controls/Base" as HLVNBase

Rectangle {
    id: root

    property bool fullScreen: false
    readonly property bool controlsVisible: dragArea.containsMouse || closeButton.containsMouse
                                            || stayOnTopButton.containsMouse

    readonly property real controlSpacing: HLVNBase.Defaults.controlSpacing
    readonly property real initialWidth: 480 * qt_scale
    readonly property real initialHeight: 272 * qt_scale

    anchors.fill: parent
    color: "black"

    Image {
        id: preview

        // Toggled for each new frame: the image requests again only if its address changes.
        property bool toggle: false

        anchors.fill: parent
        source: "image://dashWindow/preview?id=" + toggle
        fillMode: Image.PreserveAspectFit
        smooth: true
        cache: false
    }

    MouseArea {
        id: dragArea

        property bool pressValid: false
        property point pressedCursor
        property point pressedWindow

        anchors.fill: parent
        acceptedButtons: Qt.LeftButton
        hoverEnabled: true

        onPressed: {
            pressedCursor = qt_window.cursorPosGlobal()
            pressedWindow = Qt.point(qt_window.x, qt_window.y)
            pressValid = true
        }
        onPressedButtonsChanged: {
            if (root.fullScreen)
                return
            const leftButtonDown = (pressedButtons & Qt.LeftButton) !== 0
            if (!leftButtonDown)
                pressValid = false
            qt_window.setAboutToBeMoved(leftButtonDown)
        }
        // Not by the position in the item, which moves along with the window.
        onPositionChanged: {
            if (root.fullScreen || !pressValid || !(pressedButtons & Qt.LeftButton))
                return
            const cursor = qt_window.cursorPosGlobal()
            qt_window.move(pressedWindow.x + cursor.x - pressedCursor.x,
                           pressedWindow.y + cursor.y - pressedCursor.y)
        }
        onDoubleClicked: {
            pressValid = false
            root.fullScreen = !root.fullScreen
            if (root.fullScreen)
                qt_window.showFullScreen()
            else
                qt_window.showNormal()
        }
    }

    Rectangle {
        width: parent.width
        height: closeButton.height + root.controlSpacing
        color: "#BBBB0000"
        visible: root.controlsVisible
        enabled: root.controlsVisible

        HLVN.Label {
            x: root.controlSpacing
            anchors.verticalCenter: parent.verticalCenter
            color: ux.textLightColor
            text: qsTr("Double click to switch to/from fullscreen")
        }
    }

    Button {
        id: stayOnTopButton

        z: 1
        y: closeButton.y
        width: closeButton.width
        height: closeButton.height
        anchors.right: closeButton.left
        anchors.rightMargin: Math.round(3 * qt_scale)
        radius: HLVNBase.Defaults.buttonRadius
        toolTip: qsTr("Toggle stay on top")
        visible: root.controlsVisible
        enabled: root.controlsVisible

        HLVN.ImageAutoScale {
            anchors.centerIn: parent
            source: qt_window.isStayOnTop ? "qrc:/orvx/stayontop_on" : "qrc:/orvx/stayontop"
        }

        onClicked: qt_window.toggleStayOnTop()
    }

    Button {
        id: closeButton

        z: 1
        y: Math.round(0.5 * root.controlSpacing)
        width: Math.round(26 * qt_scale)
        height: width
        anchors.right: parent.right
        anchors.rightMargin: Math.round(0.5 * root.controlSpacing)
        radius: HLVNBase.Defaults.buttonRadius
        toolTip: qsTr("Close this window")
        visible: root.controlsVisible
        enabled: root.controlsVisible

        HLVN.ImageAutoScale {
            anchors.centerIn: parent
            source: "qrc:/orvx/close"
        }

        onClicked: Qt.quit()
    }

    Connections {
        target: cpp_viewModel
        function onPreviewChanged() { preview.toggle = !preview.toggle }
    }

    Component.onCompleted: {
        qt_window.setTitle(qsTr("Dashboard"))
        qt_window.minimumWidth = initialWidth
        qt_window.minimumHeight = initialHeight
        qt_window.setInitialSize(initialWidth, initialHeight)
    }
}
