import QtQuick 2.15

// Rich text with links, which the keyboard reaches: Enter follows the first.
Label {
    id: root

    property alias richText: root.text

    textFormat: Text.StyledText
    wrapMode: Text.WordWrap
    activeFocusOnTab: true
    Accessible.role: Accessible.StaticText
    Accessible.name: text.replace(/<[^>]*>/g, "")
    Keys.onReturnPressed: follow()
    Keys.onEnterPressed: follow()

    function follow() {
        const link = /href=['"]([^'"]*)['"]/.exec(text)
        if (link)
            linkActivated(link[1])
    }

    HoverHandler {
        cursorShape: root.hoveredLink !== "" ? Qt.PointingHandCursor : Qt.ArrowCursor
    }

    FocusFrame {
        visible: root.activeFocus
    }
}
