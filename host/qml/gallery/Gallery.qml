import QtQuick 2.15
import "qrc:/qml/HLVN/Controls" as HLVN

FocusScope {
    id: root

    readonly property bool narrow: width < 900 * qt_scale
    readonly property bool asking: nameDialog.visible || removeDialog.visible || vehiclesDialog.visible
                                   || messageDialog.visible
    // Wherever the keyboard is, but not behind a dialog or a menu.
    readonly property bool keysReachCards: !asking && !grid.menuOpen
    readonly property bool compact: narrow || height < 640 * qt_scale

    function openWindow() {
        qt_navigation.showView("DashboardWindow")
    }

    function openHelp() {
        qt_navigation.showView("HelpBrowser", "dashboards")
    }

    // Why a dashboard can't be changed now; empty if it can.
    function lockOf(profile) {
        return profile.builtIn ? qsTr("This is a built-in dashboard. Make a copy to change it.")
                               : gallery_actions.busyText
    }

    // Shows the problem, if any, and returns whether there is one.
    function refuses(title, problem) {
        if (problem !== "")
            messageDialog.show(title, problem)
        return problem !== ""
    }

    function askForCopy(profile, proposal, thenEdits) {
        // A busy store would block when asked for names.
        if (profile.name && !refuses(qsTr("Not now"), gallery_actions.busyText))
            nameDialog.askForCopy(profile, proposal, thenEdits)
    }

    // Built-in dashboards can't be changed: a copy is edited.
    function edit(id) {
        const profile = gallery_model.profile(id)
        if (profile.builtIn)
            askForCopy(profile, qsTr("%1 copy").arg(profile.name), true)
        else if (profile.document)
            qt_navigation.showView("DashboardEditor", profile.document)
    }

    function copy(id) {
        const profile = gallery_model.profile(id)
        askForCopy(profile, qsTr("%1 copy").arg(profile.name), false)
    }

    function makeNew() {
        askForCopy(gallery_model.profile(gallery_model.templateId), qsTr("New dashboard"), true)
    }

    function rename(id) {
        const profile = gallery_model.profile(id)
        if (profile.name && !refuses(qsTr("\u201c%1\u201d can't be renamed").arg(profile.name),
                                     lockOf(profile)))
            nameDialog.askForRename(profile)
    }

    function remove(id) {
        const profile = gallery_model.profile(id)
        if (profile.name && !refuses(qsTr("\u201c%1\u201d can't be removed").arg(profile.name),
                                     lockOf(profile)))
            removeDialog.ask(profile)
    }

    function showVehicles(id) {
        const profile = gallery_model.profile(id)
        if (profile.name)
            vehiclesDialog.show(profile)
    }

    focus: true

    Rectangle {
        anchors.fill: parent
        color: ux.windowBackground
    }

    GalleryHeader {
        id: header

        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: (root.compact ? 168 : 252) * qt_scale
        actions: root
    }

    GalleryToolBar {
        id: toolBar

        anchors { left: parent.left; right: parent.right; top: header.bottom }
        actions: root
        onFinished: grid.forceActiveFocus()
    }

    ProfileGrid {
        id: grid

        anchors { left: parent.left; right: parent.right; top: toolBar.bottom; bottom: statusBar.top }
        actions: root
    }

    GalleryStatusBar {
        id: statusBar

        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
    }

    NameDialog {
        id: nameDialog

        onMade: {
            grid.showProfile(id)
            if (edits)
                qt_navigation.showView("DashboardEditor", document)
        }
        onClosed: grid.forceActiveFocus()
    }

    RemoveDialog {
        id: removeDialog

        onClosed: grid.forceActiveFocus()
    }

    VehiclesDialog {
        id: vehiclesDialog

        onClosed: grid.forceActiveFocus()
    }

    MessageDialog {
        id: messageDialog

        onClosed: grid.forceActiveFocus()
    }

    Connections {
        target: gallery_actions
        function onFailed(message) {
            // A dialog that waits for its own action shows the failure itself.
            if (!nameDialog.waiting && !removeDialog.waiting)
                messageDialog.show(qsTr("That didn't work"), message)
        }
    }

    Connections {
        target: qt_window
        function onActiveChanged() {
            // Preview files may have changed meanwhile.
            if (qt_window.active)
                gallery_model.refresh()
        }
    }

    Shortcut {
        sequence: StandardKey.Find
        onActivated: toolBar.startSearch()
    }

    Shortcut {
        sequence: StandardKey.HelpContents
        onActivated: root.openHelp()
    }

    Shortcut {
        sequence: StandardKey.New
        enabled: gallery_model.templateId >= 0
        onActivated: root.makeNew()
    }

    Shortcut {
        sequence: "Ctrl+,"
        onActivated: qt_navigation.showView("SoftwareConfiguration")
    }

    Shortcut {
        sequence: "Ctrl+E"
        enabled: root.keysReachCards
        onActivated: root.edit(grid.currentId)
    }

    Shortcut {
        sequence: "Ctrl+D"
        enabled: root.keysReachCards
        onActivated: root.copy(grid.currentId)
    }

    Shortcut {
        sequence: "F2"
        enabled: root.keysReachCards
        onActivated: root.rename(grid.currentId)
    }

    Shortcut {
        sequence: "Del"
        enabled: root.keysReachCards
        onActivated: root.remove(grid.currentId)
    }

    Component.onCompleted: grid.forceActiveFocus()
}
