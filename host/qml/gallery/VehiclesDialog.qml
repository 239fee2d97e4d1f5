import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import "qrc:/qml/HLVN/Controls" as HLVN

// The vehicles assigned to a dashboard.
HLVN.Dialog {
    id: root

    property var profile: ({ name: "", vehicles: [] })

    function show(newProfile) {
        profile = newProfile
        open()
    }

    objectName: "vehiclesDialog"
    title: qsTr("Vehicles of \u201c%1\u201d").arg(profile.name)
    rejectText: qsTr("Close")

    Column {
        width: parent.width
        spacing: ux.spacing

        HLVN.Label {
            width: parent.width
            wrapMode: Text.Wrap
            color: ux.textDarkColor
            text: root.profile.vehicles.length > 0
                  ? qsTr("When you drive one of these, this dashboard is activated.")
                  : qsTr("No vehicles are assigned yet. A vehicle is assigned to the dashboard that is active when you first drive it, or that you activate while driving it.")
        }

        ListView {
            id: list

            x: -ux.spacing
            width: parent.width + 2 * ux.spacing
            height: Math.min(contentHeight, 280 * qt_scale)
            clip: true
            activeFocusOnTab: contentHeight > height
            boundsBehavior: Flickable.StopAtBounds
            model: root.profile.vehicles
            keyNavigationEnabled: false
            Keys.onUpPressed: flick(0, 600)
            Keys.onDownPressed: flick(0, -600)
            delegate: HLVN.Label {
                width: ListView.view.width
                height: 28 * qt_scale
                leftPadding: ux.spacing
                rightPadding: 2 * ux.spacing
                verticalAlignment: Text.AlignVCenter
                elide: Text.ElideMiddle
                textFormat: Text.PlainText
                text: modelData
            }
            T.ScrollBar.vertical: HLVN.ScrollBar { }

            // Inside, since the outside is clipped.
            HLVN.FocusFrame {
                parent: list
                anchors.margins: 0
                visible: list.activeFocus
            }
        }
    }

    Connections {
        target: gallery_model
        enabled: root.visible
        function onProfileGone(id) {
            if (id === root.profile.profileId)
                root.close()
        }
    }
}
