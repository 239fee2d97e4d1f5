import QtQuick 2.15
import Gauge.Host 1.0
import "qrc:/qml/HLVN/Controls" as HLVN

// The active dashboard, live, and what can be done with it.
FocusScope {
    id: root

    property Item actions
    readonly property var profile: gallery_model.activeProfile
    readonly property bool any: profile.name !== undefined

    Rectangle {
        anchors.fill: parent
        color: ux.popupInnerBackground

        Rectangle {
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
            height: 1
            color: ux.itemBorderColor
        }
    }

    Rectangle {
        id: frame

        anchors { left: parent.left; top: parent.top; margins: ux.spacing * 2 }
        height: parent.height - ux.spacing * 4
        width: Math.round(height * 480 / 272)
        color: "black"
        activeFocusOnTab: root.any
        Accessible.role: Accessible.Button
        Accessible.name: root.any ? qsTr("Live picture of %1. Opens the dashboard window.")
                                    .arg(root.profile.name)
                                  : qsTr("No active dashboard")
        Accessible.onPressAction: root.actions.openWindow()
        Keys.onReturnPressed: root.actions.openWindow()
        Keys.onEnterPressed: root.actions.openWindow()
        Keys.onSpacePressed: root.actions.openWindow()

        LiveDashboard {
            id: live

            objectName: "live"
            anchors.fill: parent
            visible: root.any
        }

        HLVN.Label {
            anchors.centerIn: parent
            visible: !root.any
            text: qsTr("No active dashboard")
            color: ux.textDarkColor
        }

        HLVN.FocusFrame {
            visible: frame.activeFocus
        }

        MouseArea {
            id: liveArea

            anchors.fill: parent
            enabled: root.any
            hoverEnabled: true
            cursorShape: Qt.PointingHandCursor
            onClicked: {
                frame.forceActiveFocus(Qt.MouseFocusReason)
                root.actions.openWindow()
            }
        }

        HLVN.ToolTip {
            hovered: liveArea.containsMouse
            pressed: liveArea.pressed
            text: qsTr("Open the dashboard window")
        }
    }

    Connections {
        target: gallery_model
        function onActiveProfileChanged() {
            // Without telemetry no frame of the new dashboard would replace the old one's.
            if (gallery_telemetry.state !== TelemetryStatus.Live)
                live.showWaiting()
        }
    }

    Column {
        id: column

        anchors {
            left: frame.right
            leftMargin: ux.spacing * 3
            right: corner.right
            bottom: root.actions.compact ? frame.bottom : undefined
            verticalCenter: root.actions.compact ? undefined : frame.verticalCenter
        }
        spacing: ux.spacing

        HLVN.Label {
            width: corner.x - column.x
            elide: Text.ElideRight
            text: gallery_telemetry.state === TelemetryStatus.Live ? qsTr("Active dashboard, live")
                                                                 : qsTr("Active dashboard")
            color: ux.textDarkColor
            font.pixelSize: ux.h4FontSize
            visible: root.any
        }

        HLVN.Label {
            width: parent.width
            text: root.any ? root.profile.name : qsTr("Choose a dashboard below")
            textFormat: Text.PlainText
            elide: Text.ElideRight
            font { pixelSize: ux.h1FontSize; weight: Font.Bold }
        }

        HLVN.Label {
            width: parent.width
            visible: root.any
            elide: Text.ElideRight
            color: ux.textDarkColor
            text: !root.any ? ""
                            : (root.profile.builtIn ? qsTr("Built-in") : qsTr("Yours")) + "  \u00b7  "
                              + (root.profile.vehicles.length === 0
                                 ? qsTr("no vehicles assigned yet")
                                 : qsTr("%n vehicle(s) assigned", "", root.profile.vehicles.length))
        }

        Item {
            width: 1
            height: root.actions.compact ? 0 : ux.spacing
        }

        Row {
            spacing: ux.spacing

            HLVN.RoundedButton {
                objectName: "openWindow"
                text: qsTr("Open window")
                primary: true
                enabled: root.any
                toolTip: qsTr("Show the dashboard in its own window")
                onClicked: root.actions.openWindow()
            }

            HLVN.RoundedButton {
                objectName: "editActive"
                text: qsTr("Edit")
                enabled: root.any
                toolTip: root.any && root.profile.builtIn
                         ? qsTr("Edit a copy of this dashboard")
                         : qsTr("Open this dashboard in the editor")
                onClicked: root.actions.edit(root.profile.profileId)
            }

            HLVN.RoundedButton {
                text: qsTr("Vehicles")
                visible: root.any
                toolTip: qsTr("Show the vehicles assigned to this dashboard")
                onClicked: root.actions.showVehicles(root.profile.profileId)
            }
        }
    }

    Row {
        id: corner

        anchors { right: parent.right; top: parent.top; margins: ux.spacing * 2 }
        spacing: ux.spacing

        HLVN.RoundedButton {
            objectName: "settings"
            text: qsTr("Settings")
            toolTip: qsTr("Settings (Ctrl+,)")
            onClicked: qt_navigation.showView("SoftwareConfiguration")
        }

        HLVN.RoundedButton {
            objectName: "help"
            text: qsTr("Help")
            toolTip: qsTr("Help (F1)")
            onClicked: root.actions.openHelp()
        }
    }
}
