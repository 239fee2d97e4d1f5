import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import Qt.labs.folderlistmodel 2.15
import "HLVN/Controls"

// Chooses an existing file: places to the left, the folder in the middle, its path above. Typing
// finds a name, Enter opens, Backspace goes up, Escape cancels.
Rectangle {
    id: root

    property string typedName
    property string wantedName: qt_window.startName // Selected once the folder is read.
    property string problem
    readonly property string folderPath: qt_window.nativePath(files.folder)
    readonly property bool pathEdited: path.text !== folderPath

    color: ux.windowBackground

    function goTo(folder, name) {
        problem = ""
        wantedName = name || ""
        files.folder = folder
        path.text = Qt.binding(() => folderPath)
        list.currentIndex = 0
        list.forceActiveFocus()
    }

    function open(index) {
        if (index < 0 || index >= files.count)
            return
        const address = files.get(index, "fileURL")
        if (files.isFolder(index))
            goTo(address)
        else
            choose(address)
    }

    function openTyped() {
        const address = qt_window.typed(path.text, files.folder)
        if (qt_window.isFolder(address))
            goTo(address)
        else
            choose(address)
    }

    function choose(address) {
        if (!qt_window.accept(address))
            problem = qsTr("The file \u201c%1\u201d does not exist.").arg(qt_window.nativePath(address))
    }

    function goUp() {
        if (files.parentFolder.toString() !== "")
            goTo(files.parentFolder, qt_window.fileName(files.folder))
    }

    // Selects the entry of this name, if there is one.
    function select(name) {
        for (let i = 0; i < files.count; ++i) {
            if (files.get(i, "fileName") === name) {
                list.currentIndex = i
                wantedName = "" // Later changes of the folder keep the selection.
                return
            }
        }
    }

    // The first entry that begins with what has been typed.
    function find(text) {
        for (let i = 0; i < files.count; ++i) {
            if (files.get(i, "fileName").toLowerCase().startsWith(text.toLowerCase())) {
                list.currentIndex = i
                return
            }
        }
    }

    FolderListModel {
        id: files

        folder: qt_window.startFolder
        nameFilters: qt_window.namePatterns
        showDirsFirst: true
        showOnlyReadable: true
        caseSensitive: false
        onStatusChanged: {
            if (status === FolderListModel.Ready)
                root.select(root.wantedName)
        }
    }

    Timer {
        id: typing

        interval: 1000
        onTriggered: root.typedName = ""
    }

    Row {
        id: pathBar

        x: ux.spacing
        y: ux.spacing
        width: parent.width - 2 * ux.spacing
        spacing: ux.spacing

        RoundedButton {
            id: upButton

            text: qsTr("Up")
            toolTip: qsTr("Parent folder (Backspace)")
            enabled: files.parentFolder.toString() !== ""
            onClicked: root.goUp()
        }

        TextField {
            id: path

            width: parent.width - upButton.width - parent.spacing
            text: root.folderPath
            Accessible.name: qsTr("Path")
            onTextEdited: root.problem = ""
            onAccepted: root.openTyped()
        }
    }

    Column {
        id: places

        anchors.top: pathBar.bottom
        anchors.left: parent.left
        anchors.margins: ux.spacing
        width: Math.round(150 * qt_scale)
        spacing: ux.spacing / 2

        Repeater {
            model: qt_window.places

            RoundedButton {
                width: places.width
                flat: true
                text: modelData.name
                onClicked: root.goTo(modelData.folder)
            }
        }
    }

    Rectangle {
        anchors.top: pathBar.bottom
        anchors.left: places.right
        anchors.right: parent.right
        anchors.bottom: bottomBar.top
        anchors.margins: ux.spacing
        color: ux.popupInnerBackground
        radius: ux.radius
        border.width: list.activeFocus ? ux.focusWidth : 1
        border.color: list.activeFocus ? ux.focusColor : ux.itemBorderColor

        ListView {
            id: list

            anchors.fill: parent
            anchors.margins: ux.focusWidth
            clip: true
            focus: true
            activeFocusOnTab: true
            boundsBehavior: Flickable.StopAtBounds
            model: files
            T.ScrollBar.vertical: ScrollBar {
            }

            Keys.onReturnPressed: root.open(currentIndex)
            Keys.onEnterPressed: root.open(currentIndex)
            Keys.onPressed: {
                if (event.key === Qt.Key_Backspace) {
                    root.goUp()
                    event.accepted = true
                } else if (event.text.length === 1 && event.text >= " ") {
                    root.typedName += event.text
                    typing.restart()
                    root.find(root.typedName)
                    event.accepted = true
                }
            }

            delegate: Rectangle {
                width: list.width
                height: Math.round(28 * qt_scale)
                radius: ux.radius
                color: ListView.isCurrentItem ? ux.hoverColor : "transparent"

                Label {
                    anchors.fill: parent
                    anchors.leftMargin: ux.spacing
                    anchors.rightMargin: 2 * ux.spacing
                    verticalAlignment: Text.AlignVCenter
                    elide: Text.ElideMiddle
                    color: fileIsDir ? ux.textDarkColor : ux.textLightColor
                    text: fileIsDir ? fileName + "/" : fileName
                }

                TapHandler {
                    onTapped: {
                        list.currentIndex = index
                        list.forceActiveFocus()
                    }
                    onDoubleTapped: root.open(index)
                }
            }

            Label {
                anchors.centerIn: parent
                visible: files.status === FolderListModel.Ready && files.count === 0
                color: ux.textDarkColor
                text: qsTr("No matching files here")
            }
        }
    }

    Item {
        id: bottomBar

        width: parent.width
        height: ux.controlHeight + 2 * ux.spacing
        anchors.bottom: parent.bottom

        Label {
            anchors.left: parent.left
            anchors.leftMargin: ux.spacing
            anchors.right: buttons.left
            anchors.rightMargin: ux.spacing
            anchors.verticalCenter: parent.verticalCenter
            elide: Text.ElideMiddle
            color: root.problem !== "" ? ux.dangerColor : ux.textDarkColor
            text: root.problem !== "" ? root.problem : qt_window.filter
        }

        Row {
            id: buttons

            anchors.right: parent.right
            anchors.rightMargin: ux.spacing
            anchors.verticalCenter: parent.verticalCenter
            spacing: ux.spacing

            RoundedButton {
                text: qsTr("Cancel")
                onClicked: qt_window.close()
            }

            RoundedButton {
                primary: true
                enabled: root.pathEdited || (list.currentIndex >= 0 && files.count > 0)
                text: qsTr("Open")
                onClicked: {
                    if (root.pathEdited)
                        root.openTyped()
                    else
                        root.open(list.currentIndex)
                }
            }
        }
    }

    Shortcut {
        sequence: StandardKey.Cancel
        onActivated: qt_window.close()
    }

    Component.onCompleted: {
        qt_window.minimumWidth = 480 * qt_scale
        qt_window.minimumHeight = 320 * qt_scale
        qt_window.setInitialSize(720 * qt_scale, 480 * qt_scale)
    }
}
