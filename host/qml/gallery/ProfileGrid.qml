import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import "qrc:/qml/HLVN/Controls" as HLVN

// The cards, or why there are none.
FocusScope {
    id: root

    property Item actions
    readonly property alias currentId: grid.currentId
    readonly property alias menuOpen: menu.visible

    function showProfile(id) {
        const row = gallery_model.rowOf(id)
        if (row < 0)
            return
        grid.currentIndex = row
        grid.positionViewAtIndex(row, GridView.Contain)
    }

    function openMenu(id, item, x, y) {
        menu.profile = gallery_model.profile(id)
        menu.popup(item, x, y)
    }

    function openMenuOfCurrent() {
        if (grid.currentItem)
            openMenu(grid.currentId, grid.currentItem, grid.currentItem.width / 3, grid.currentItem.height / 2)
    }

    GridView {
        id: grid

        readonly property int columns: Math.max(1, Math.floor(width / (264 * qt_scale)))
        // Taken from the card, since a search may change it and keep the index.
        readonly property int currentId: currentItem ? currentItem.profileId : -1

        objectName: "grid"
        anchors { fill: parent; leftMargin: ux.spacing; rightMargin: ux.spacing }
        bottomMargin: ux.spacing
        focus: true
        activeFocusOnTab: true
        clip: true
        model: gallery_model
        cellWidth: Math.floor(width / columns)
        cellHeight: Math.round((cellWidth - 3 * ux.spacing) * 272 / 480 + 66 * qt_scale)
        boundsBehavior: Flickable.StopAtBounds
        cacheBuffer: cellHeight
        reuseItems: true
        keyNavigationEnabled: true
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Dashboards")

        delegate: ProfileCard {
            width: grid.cellWidth
            height: grid.cellHeight
            current: GridView.isCurrentItem
            focused: current && (grid.activeFocus || menu.visible)
            onActivated: {
                grid.currentIndex = index
                grid.forceActiveFocus(Qt.MouseFocusReason)
                gallery_actions.activate(profileId)
            }
            onMenuRequested: {
                grid.currentIndex = index
                grid.forceActiveFocus(Qt.MouseFocusReason)
                root.openMenu(profileId, this, x, y)
            }
        }

        T.ScrollBar.vertical: HLVN.ScrollBar {
            parent: root
            x: root.width - width
            y: grid.y
            height: grid.height
        }

        Keys.onPressed: {
            const rows = Math.max(1, Math.floor(height / cellHeight)) * columns
            event.accepted = true
            switch (event.key) {
            case Qt.Key_Return:
            case Qt.Key_Enter:
            case Qt.Key_Space:
                if (currentId >= 0)
                    gallery_actions.activate(currentId)
                break
            case Qt.Key_Menu:
                root.openMenuOfCurrent()
                break
            case Qt.Key_F10:
                if (event.modifiers & Qt.ShiftModifier)
                    root.openMenuOfCurrent()
                else
                    event.accepted = false
                break
            case Qt.Key_Home:
                currentIndex = 0
                break
            case Qt.Key_End:
                currentIndex = count - 1
                break
            case Qt.Key_PageDown:
                currentIndex = Math.min(count - 1, currentIndex + rows)
                break
            case Qt.Key_PageUp:
                currentIndex = Math.max(0, currentIndex - rows)
                break
            default:
                event.accepted = false
            }
        }

        Component.onCompleted: root.showProfile(gallery_model.activeProfile.profileId)
    }

    Column {
        anchors.centerIn: parent
        width: Math.min(parent.width - ux.spacing * 4, 520 * qt_scale)
        spacing: ux.spacing
        visible: grid.count === 0

        HLVN.Label {
            objectName: "emptyHeading"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            textFormat: Text.PlainText
            font { pixelSize: ux.h3FontSize; weight: Font.Bold }
            text: gallery_model.total > 0 ? qsTr("Nothing matches \u201c%1\u201d").arg(gallery_model.searchText)
                                          : qsTr("There are no dashboards yet")
        }

        HLVN.Label {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            color: ux.textDarkColor
            text: gallery_model.total > 0
                  ? qsTr("The search covers the names of dashboards and vehicles. Press Escape in the search field to show all.")
                  : gallery_model.templateId >= 0
                    ? qsTr("Create one with \u201cNew from template\u201d, or put a dashboard's folder into Orvalentix/Halvorin/Dashboards in your documents and restart the program.")
                    : qsTr("Put a dashboard's folder into Orvalentix/Halvorin/Dashboards in your documents and restart the program.")
        }
    }

    ProfileMenu {
        id: menu

        actions: root.actions
        onClosed: {
            // A dialog that the menu opened has the focus already.
            if (!root.actions.asking)
                grid.forceActiveFocus()
        }
    }

    Connections {
        target: gallery_model
        function onProfileGone(id) {
            if (menu.visible && menu.profile.profileId === id)
                menu.close()
        }
    }
}
