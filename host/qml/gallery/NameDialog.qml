import QtQuick 2.15
import "qrc:/qml/HLVN/Controls" as HLVN

// Asks for the name of a copy or for a new name, and stays open until the store has accepted it.
HLVN.Dialog {
    id: root

    property var profile: ({ name: "" })
    property bool renames: false
    property bool edits: false
    property bool waiting: false
    property string refusal: "" // The store's objection to this name.
    property bool gone: false
    property string proposed
    readonly property bool fromTemplate: edits && profile.profileId === gallery_model.templateId
    readonly property string problem: gone ? qsTr("This dashboard no longer exists.")
                                           : gallery_actions.nameProblem(field.text.trim(),
                                                                         renames ? profile.name : "")

    // A copy has been made.
    signal made(int id, string document)

    function askForCopy(newProfile, proposal, thenEdits) {
        renames = false
        edits = thenEdits
        start(newProfile, gallery_actions.freeName(proposal))
    }

    function askForRename(newProfile) {
        renames = true
        edits = false
        start(newProfile, newProfile.name)
    }

    function start(newProfile, proposal) {
        profile = newProfile
        gone = false
        proposed = proposal
        field.text = proposal
        field.selectAll()
        refusal = ""
        open()
        field.forceActiveFocus()
    }

    function submit() {
        if (problem !== "" || waiting)
            return
        refusal = ""
        waiting = renames ? gallery_actions.rename(profile.profileId, field.text.trim())
                          : gallery_actions.copy(profile.profileId, field.text.trim())
    }

    objectName: "nameDialog"
    title: renames ? qsTr("Rename \u201c%1\u201d").arg(profile.name)
         : fromTemplate ? qsTr("New dashboard from template")
         : edits ? qsTr("Name your copy")
         : qsTr("Copy \u201c%1\u201d").arg(profile.name)
    busyText: waiting ? gallery_actions.busyText : ""
    acceptText: renames ? qsTr("Rename") : edits ? qsTr("Create and edit") : qsTr("Copy")
    acceptEnabled: problem === "" && !waiting
    onAcceptClicked: submit()
    onClosed: waiting = false

    Column {
        width: parent.width
        spacing: ux.spacing

        HLVN.Label {
            width: parent.width
            wrapMode: Text.Wrap
            color: ux.textDarkColor
            visible: root.edits && text !== ""
            text: root.fromTemplate
                  ? qsTr("Your own dashboard, created from the template.")
                  : qsTr("Built-in dashboards can't be changed. Your changes go into a copy.")
        }

        HLVN.TextField {
            id: field

            objectName: "nameField"
            width: parent.width
            enabled: !root.waiting
            maximumLength: 255
            placeholderText: qsTr("Name")
            Accessible.name: qsTr("Name of the dashboard")
            onTextChanged: root.refusal = ""
            onAccepted: root.submit()
        }

        HLVN.Label {
            objectName: "nameProblem"
            width: parent.width
            // Always keeps room for one line, so that nothing jumps while typing.
            height: Math.max(implicitHeight, ux.textFontSize * 1.4)
            wrapMode: Text.Wrap
            textFormat: Text.PlainText
            // Not an error before the user has typed.
            color: root.refusal === "" && field.text === root.proposed ? ux.textDarkColor : ux.dangerColor
            text: root.waiting ? "" : root.refusal !== "" ? root.refusal : root.problem
        }
    }

    Connections {
        target: gallery_actions
        enabled: root.waiting
        function onFailed(message) {
            root.waiting = false
            root.refusal = message
            field.forceActiveFocus()
        }
        function onSucceeded() {
            if (root.renames)
                root.close()
        }
        function onCopied(id, document) {
            root.made(id, document)
            root.close()
        }
    }

    Connections {
        target: gallery_model
        enabled: root.visible && !root.waiting
        function onProfileGone(id) {
            if (id === root.profile.profileId)
                root.gone = true
        }
    }
}
