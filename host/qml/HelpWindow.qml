import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import "HLVN/Controls" as HLVN

Rectangle {
    id: root

    readonly property real margin: 3 * ux.spacing
    // About ninety letters: longer lines are hard to follow.
    readonly property real columnWidth: 760 * qt_scale
    readonly property real pictureWidth: 480 * qt_scale

    //: The language of the help's pages, as their files are named: dashboards.de.md
    readonly property string language: qsTr("en")
    property bool complete: false

    function show() {
        help_page.show(qt_window.page, language, text.textDocument, ux, pictureWidth)
        qt_window.anchor === "" ? page.contentY = 0 : showAnchor(qt_window.anchor)
    }

    function showAnchor(anchor) {
        const position = help_page.positionOf(anchor)
        if (position >= 0)
            showPosition(position)
        return position >= 0
    }

    function showPosition(position) {
        const top = text.y + text.positionToRectangle(position).y - 2 * ux.spacing
        page.contentY = Math.max(0, Math.min(top, page.contentHeight - page.height))
        pinned = position
    }

    function follow(link) {
        if (link.startsWith("#"))
            showAnchor(link.slice(1))
        else
            Qt.openUrlExternally(link)
    }

    function isInSight(position) {
        const rectangle = text.positionToRectangle(position)
        const top = text.y + rectangle.y - page.contentY
        return top >= 0 && top + rectangle.height <= page.height
    }

    // Starts at the last match while that is visible, else at the top of the visible part.
    function find(backward) {
        const last = backward ? text.selectionStart : text.selectionEnd
        const from = isInSight(last) ? last : text.positionAt(0, page.contentY - text.y)
        const place = help_page.find(findField.text, from, backward)
        findField.missing = findField.text !== "" && place.start === undefined
        if (place.start === undefined) {
            text.deselect()
            return
        }
        text.select(place.start, place.end)
        if (!isInSight(place.start))
            showPosition(place.start)
    }

    // The position to scroll to once the next frame has its final layout; -1 for none.
    property int pinned: -1

    color: ux.windowBackground
    onLanguageChanged: {
        if (complete)
            show()
    }
    onColumnWidthChanged: { // Follows the scale, and the page keeps the one it was laid out with.
        if (complete)
            Qt.callLater(show)
    }
    Keys.onEscapePressed: qt_window.close()

    Rectangle {
        id: sidebar

        width: 240 * qt_scale
        height: parent.height
        color: ux.popupInnerBackground

        HLVN.TextField {
            id: findField

            property bool missing: false

            objectName: "find"
            x: ux.spacing
            y: ux.spacing
            width: parent.width - 2 * ux.spacing
            color: missing ? ux.dangerColor : ux.textLightColor
            placeholderText: qsTr("Find (Ctrl+F)")
            Accessible.name: qsTr("Find on this page")
            onTextEdited: {
                // Searches from where the search began, not from behind the match.
                text.cursorPosition = text.selectionStart
                root.find(false)
            }
            Keys.onReturnPressed: root.find(event.modifiers & Qt.ShiftModifier)
            Keys.onEnterPressed: root.find(event.modifiers & Qt.ShiftModifier)
            Keys.onEscapePressed: {
                clear()
                missing = false
                text.deselect()
                page.forceActiveFocus()
            }
        }

        ListView {
            id: contents

            objectName: "contents"
            anchors.top: findField.bottom
            anchors.topMargin: ux.spacing
            anchors.bottom: parent.bottom
            width: parent.width
            clip: true
            activeFocusOnTab: true
            keyNavigationEnabled: true
            boundsBehavior: Flickable.StopAtBounds
            model: help_page.headings.filter(heading => heading.level === 2)
            T.ScrollBar.vertical: HLVN.ScrollBar {
            }
            Keys.onReturnPressed: root.showPosition(currentItem.place)
            Keys.onEnterPressed: root.showPosition(currentItem.place)

            delegate: Rectangle {
                readonly property int place: modelData.position
                readonly property bool shown: root.shownSection === index

                width: ListView.view.width
                height: ux.controlHeight
                color: mouse.containsMouse ? ux.hoverColor : "transparent"

                Rectangle {
                    width: 3 * qt_scale
                    height: parent.height
                    color: ux.accentColor
                    visible: parent.shown
                }

                HLVN.Label {
                    anchors.fill: parent
                    anchors.leftMargin: 2 * ux.spacing
                    anchors.rightMargin: ux.spacing
                    verticalAlignment: Text.AlignVCenter
                    elide: Text.ElideRight
                    color: parent.shown ? ux.textLightColor : ux.textDarkColor
                    text: modelData.title
                }

                HLVN.FocusFrame {
                    anchors.margins: 1
                    visible: contents.activeFocus && parent.ListView.isCurrentItem
                }

                MouseArea {
                    id: mouse

                    anchors.fill: parent
                    hoverEnabled: true
                    onClicked: {
                        contents.currentIndex = index
                        root.showPosition(parent.place)
                    }
                }
            }
        }
    }

    // The last section whose heading has reached the top of the page.
    readonly property int shownSection: {
        const sections = contents.model
        if (page.atYEnd && page.contentY > 0)
            return sections.length - 1
        const line = page.contentY + 6 * ux.spacing - text.y
        let last = -1
        for (let i = 0; i < sections.length; ++i) {
            if (text.height > 0 && text.positionToRectangle(sections[i].position).y <= line)
                last = i
        }
        return last
    }

    HLVN.FlickableV {
        id: page

        objectName: "page"
        anchors.left: sidebar.right
        anchors.right: parent.right
        height: parent.height
        contentHeight: text.y + text.height + root.margin
        focus: true

        TextEdit {
            id: text

            objectName: "text"
            x: Math.max(root.margin, (page.width - width) / 2)
            y: root.margin
            width: Math.min(root.columnWidth, page.width - 2 * root.margin)
            readOnly: true
            selectByMouse: true
            persistentSelection: true
            activeFocusOnPress: false
            textFormat: TextEdit.RichText
            wrapMode: TextEdit.Wrap
            baseUrl: "qrc:/help/"
            color: ux.textLightColor
            selectionColor: ux.accentColor
            selectedTextColor: ux.accentTextColor
            onLinkActivated: root.follow(link)

            HoverHandler {
                cursorShape: text.hoveredLink !== "" ? Qt.PointingHandCursor : Qt.IBeamCursor
            }
        }
    }

    Shortcut {
        sequences: [StandardKey.Find]
        onActivated: {
            findField.forceActiveFocus()
            findField.selectAll()
        }
    }

    Shortcut {
        sequences: [StandardKey.Copy]
        onActivated: text.copy()
    }

    Binding {
        target: qt_window
        property: "title"
        value: qsTr("Help")
    }

    Connections {
        target: qt_window
        function onRequested() { root.show() }
        function onAfterAnimating() {
            if (root.pinned < 0)
                return
            root.showPosition(root.pinned)
            root.pinned = -1
        }
    }

    Component.onCompleted: {
        qt_window.minimumWidth = 640 * qt_scale
        qt_window.minimumHeight = 360 * qt_scale
        qt_window.setInitialSize(1100 * qt_scale, 760 * qt_scale)
        complete = true
        show()
    }
}
