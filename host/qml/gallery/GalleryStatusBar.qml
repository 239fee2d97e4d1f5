import QtQuick 2.15
import Gauge.Host 1.0
import "qrc:/qml/HLVN/Controls" as HLVN

// The telemetry source and its state, the vehicle, and the dashboard that it is assigned to.
Rectangle {
    id: root

    readonly property color stateColor: {
        switch (gallery_telemetry.state) {
        case TelemetryStatus.Live:
            return ux.goodColor
        case TelemetryStatus.Paused:
            return ux.warningColor
        case TelemetryStatus.Lost:
        case TelemetryStatus.Absent:
            return ux.dangerColor
        default:
            return ux.textDarkColor
        }
    }
    property string dashboard

    function findDashboard() {
        dashboard = gallery_model.dashboardOf(gallery_telemetry.vehicle)
    }

    height: Math.round(40 * qt_scale)
    color: ux.popupInnerBackground
    Accessible.role: Accessible.StatusBar
    Accessible.name: telemetry.text + ", " + vehicle.text

    Rectangle {
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: 1
        color: ux.itemBorderColor
    }

    Rectangle {
        id: dot

        anchors { left: parent.left; leftMargin: ux.spacing * 2; verticalCenter: parent.verticalCenter }
        width: 10 * qt_scale
        height: width
        radius: gallery_telemetry.state === TelemetryStatus.Live ? width / 2 : 1
        color: root.stateColor
    }

    HLVN.Label {
        id: telemetry

        objectName: "telemetryState"
        anchors { left: dot.right; leftMargin: ux.spacing; verticalCenter: parent.verticalCenter }
        width: Math.min(implicitWidth, root.width / 2)
        elide: Text.ElideRight
        textFormat: Text.PlainText
        text: qsTr("%1: %2").arg(gallery_telemetry.source).arg(gallery_telemetry.text)
    }

    HLVN.Label {
        id: vehicle

        objectName: "vehicle"
        anchors {
            left: telemetry.right
            leftMargin: ux.spacing * 3
            right: parent.right
            rightMargin: ux.spacing * 2
            verticalCenter: parent.verticalCenter
        }
        horizontalAlignment: Text.AlignRight
        elide: Text.ElideMiddle
        textFormat: Text.PlainText
        color: ux.textDarkColor
        text: gallery_telemetry.vehicle === "" ? qsTr("No vehicle yet")
            : root.dashboard === "" ? qsTr("Vehicle: %1").arg(gallery_telemetry.vehicle)
            : qsTr("Vehicle: %1").arg(gallery_telemetry.vehicle) + "     "
              + qsTr("Dashboard: %1").arg(root.dashboard)
    }

    Connections {
        target: gallery_model
        function onProfilesChanged() { root.findDashboard() }
    }

    Connections {
        target: gallery_telemetry
        function onVehicleChanged() { root.findDashboard() }
    }

    Component.onCompleted: findDashboard()
}
