import QtQuick 2.15
import "qrc:/qml/HLVN/Controls" as HLVN

// The heading of the cards, the search and the running action.
FocusScope {
    id: root

    property Item actions

    // The keyboard focus should return to the cards.
    signal finished

    function startSearch() {
        search.forceActiveFocus(Qt.ShortcutFocusReason)
        search.selectAll()
    }

    height: search.height + ux.spacing * 3

    HLVN.Label {
        id: heading

        anchors { left: parent.left; leftMargin: ux.spacing * 2; verticalCenter: parent.verticalCenter }
        text: qsTr("Dashboards")
        font { pixelSize: ux.h3FontSize; weight: Font.Bold }
    }

    HLVN.Label {
        anchors { left: heading.right; leftMargin: ux.spacing; baseline: heading.baseline }
        color: ux.textDarkColor
        text: gallery_model.searchText.length > 0
              ? qsTr("%1 of %2").arg(gallery_model.count).arg(gallery_model.total)
              : gallery_model.total
    }

    Row {
        anchors { right: parent.right; rightMargin: ux.spacing * 2; verticalCenter: parent.verticalCenter }
        spacing: ux.spacing

        HLVN.BusyLabel {
            objectName: "busy"
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, root.width - heading.width - search.width - newButton.width
                            - 140 * qt_scale)
            visible: gallery_actions.busy
            text: gallery_actions.busyText
        }

        HLVN.SearchField {
            id: search

            objectName: "search"
            width: (root.actions.narrow ? 240 : 280) * qt_scale
            placeholderText: qsTr("Search names and vehicles")
            toolTip: qsTr("Ctrl+F; Escape clears")
            onTextChanged: gallery_model.searchText = text
            onFinished: root.finished()
        }

        HLVN.RoundedButton {
            id: newButton

            objectName: "newFromTemplate"
            visible: gallery_model.templateId >= 0
            enabled: !gallery_actions.busy
            text: qsTr("New from template")
            toolTip: qsTr("Create your own dashboard from the template (Ctrl+N)")
            onClicked: root.actions.makeNew()
        }
    }
}
