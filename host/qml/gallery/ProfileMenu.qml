import QtQuick 2.15
import "qrc:/qml/HLVN/Controls" as HLVN

// The actions on one dashboard.
HLVN.Menu {
    id: root

    property Item actions
    property var profile: ({})
    readonly property string lock: actions ? actions.lockOf(profile) : ""

    HLVN.MenuItem {
        objectName: "menuActivate"
        text: qsTr("Activate")
        shortcut: qsTr("Enter")
        enabled: !root.profile.active
        reason: qsTr("Already active.")
        onTriggered: gallery_actions.activate(root.profile.profileId)
    }

    HLVN.MenuItem {
        objectName: "menuEdit"
        text: root.profile.builtIn ? qsTr("Edit a copy\u2026") : qsTr("Edit")
        shortcut: qsTr("Ctrl+E")
        enabled: !root.profile.builtIn || !gallery_actions.busy
        reason: gallery_actions.busyText
        onTriggered: root.actions.edit(root.profile.profileId)
    }

    HLVN.MenuItem {
        objectName: "menuCopy"
        text: qsTr("Copy\u2026")
        shortcut: qsTr("Ctrl+D")
        enabled: !gallery_actions.busy
        reason: gallery_actions.busyText
        onTriggered: root.actions.copy(root.profile.profileId)
    }

    HLVN.MenuItem {
        objectName: "menuVehicles"
        text: qsTr("Vehicles\u2026")
        onTriggered: root.actions.showVehicles(root.profile.profileId)
    }

    HLVN.MenuSeparator { }

    HLVN.MenuItem {
        objectName: "menuRename"
        text: qsTr("Rename\u2026")
        shortcut: qsTr("F2")
        enabled: root.lock === ""
        reason: root.lock
        onTriggered: root.actions.rename(root.profile.profileId)
    }

    HLVN.MenuItem {
        objectName: "menuRemove"
        text: qsTr("Remove\u2026")
        shortcut: qsTr("Del")
        enabled: root.lock === ""
        reason: root.lock
        onTriggered: root.actions.remove(root.profile.profileId)
    }
}
