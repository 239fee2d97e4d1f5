import QtQuick 2.15
import "qrc:/qml/HLVN/Controls" as HLVN

// Asks before a dashboard is removed, and says what is lost with it.
HLVN.Dialog {
    id: root

    property var profile: ({ name: "", folder: "", vehicles: [] })
    property bool waiting: false
    property string refusal: ""

    function ask(newProfile) {
        profile = newProfile
        refusal = ""
        open()
    }

    objectName: "removeDialog"
    title: qsTr("Remove \u201c%1\u201d?").arg(profile.name)
    busyText: waiting ? gallery_actions.busyText : ""
    acceptText: qsTr("Remove")
    dangerous: true
    acceptEnabled: !waiting
    onAcceptClicked: {
        refusal = ""
        waiting = gallery_actions.remove(profile.profileId, profile.name)
    }
    onClosed: waiting = false

    Column {
        width: parent.width
        spacing: ux.spacing

        HLVN.Label {
            objectName: "removeText"
            width: parent.width
            wrapMode: Text.Wrap
            lineHeight: 1.2
            text: {
                let lines = [qsTr("This deletes its folder and everything in it, which can't be undone:"),
                             root.profile.folder, ""]
                const vehicles = root.profile.vehicles
                if (vehicles.length > 0) {
                    const more = vehicles.length - 3
                    lines.push(qsTr("Vehicles that will have no dashboard: %1")
                               .arg(vehicles.slice(0, 3).join(", "))
                               + (more > 0 ? " " + qsTr("and %n more", "", more) : ""))
                }
                if (root.profile.active)
                    lines.push(qsTr("This is the active dashboard; another one becomes active."))
                return lines.join("\n").trim()
            }
        }

        HLVN.Label {
            objectName: "removeProblem"
            width: parent.width
            visible: text !== ""
            wrapMode: Text.Wrap
            textFormat: Text.PlainText
            color: ux.dangerColor
            text: root.refusal
        }
    }

    Connections {
        target: gallery_actions
        enabled: root.waiting
        function onFailed(message) {
            root.waiting = false
            root.refusal = message
        }
        function onSucceeded() {
            root.close()
        }
    }

    Connections {
        target: gallery_model
        enabled: root.visible && !root.waiting
        function onProfileGone(id) {
            if (id === root.profile.profileId)
                root.close()
        }
    }
}
