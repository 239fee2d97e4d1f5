import QtQuick 2.15
import QtQuick.Layouts 1.15
import "HLVN/Controls" as HLVN

Rectangle {
    id: root

    readonly property real margin: 3 * ux.spacing
    readonly property real fieldWidth: 260 * qt_scale
    // The grid's height, not its implicit one: reading that forces a layout during a change
    // of scale.
    readonly property real contentHeight: grid.height + notices.height + closeButton.height + 4 * margin

    color: ux.windowBackground
    Keys.onEscapePressed: qt_window.close()

    component Caption: HLVN.Label {
        Layout.alignment: Qt.AlignVCenter
        Layout.fillWidth: true
    }

    component Choice: HLVN.ComboBox {
        Layout.preferredWidth: root.fieldWidth
    }

    GridLayout {
        id: grid

        x: root.margin
        y: root.margin
        width: root.width - 2 * root.margin
        columns: 2
        columnSpacing: root.margin
        rowSpacing: 1.5 * ux.spacing

        Caption {
            text: qsTr("Units")
        }

        Choice {
            objectName: "units"
            focus: true
            model: [{ text: qsTr("Kilometres per hour (km/h)"), value: false },
                    { text: qsTr("Miles per hour (mph)"), value: true }]
            selectedValue: host_settings.useMph
            Accessible.name: qsTr("Units")
            onChosen: host_settings.useMph = value
        }

        Caption {
            text: qsTr("Telemetry source")
        }

        Choice {
            objectName: "telemetry"
            model: qt_window.telemetrySources
            selectedValue: host_settings.telemetrySource
            Accessible.name: qsTr("Telemetry source")
            onChosen: host_settings.telemetrySource = value
        }

        Caption {
            text: qsTr("Dashboard at start-up")
        }

        Choice {
            objectName: "dashboard"
            model: qt_window.dashboards
            selectedValue: host_settings.startupDashboard
            Accessible.name: qsTr("Dashboard at start-up")
            onChosen: host_settings.startupDashboard = value
        }

        Caption {
            text: qsTr("Language")
        }

        Choice {
            objectName: "language"
            // Each language in its own name, for users lost in another one.
            model: [{ text: qsTr("System default"), value: "" }].concat(qt_window.languages)
            selectedValue: host_settings.language
            Accessible.name: qsTr("Language")
            onChosen: host_settings.language = value
        }
    }

    Column {
        id: notices

        anchors.left: grid.left
        anchors.right: grid.right
        anchors.bottom: closeButton.top
        anchors.bottomMargin: root.margin
        spacing: ux.spacing

        Notice {
            objectName: "problem"
            width: parent.width
            visible: text !== ""
            stripe: ux.warningColor
            text: host_settings.problem
        }

        Notice {
            objectName: "restart"
            width: parent.width
            visible: host_settings.restartNeeded
            stripe: ux.accentColor
            text: qsTr("Applies after a restart")
            action: qsTr("Restart now")
            onTriggered: qt_window.restartRequested()
        }
    }

    HLVN.RoundedButton {
        id: closeButton

        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: root.margin
        text: qsTr("Close")
        onClicked: qt_window.close()
    }

    Binding {
        target: qt_window
        property: "title"
        value: qsTr("Settings")
    }

    // Grows with the notices.
    Binding {
        target: qt_window
        property: "minimumHeight"
        value: Math.ceil(root.contentHeight)
    }

    Component.onCompleted: {
        qt_window.minimumWidth = 520 * qt_scale
        qt_window.setInitialSize(560 * qt_scale, 380 * qt_scale)
    }
}
