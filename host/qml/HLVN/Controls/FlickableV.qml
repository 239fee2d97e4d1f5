import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// Scrolls vertically, by wheel, drag, scroll bar and keys.
Flickable {
    id: root

    clip: true
    contentWidth: width
    flickableDirection: Flickable.VerticalFlick
    boundsBehavior: Flickable.StopAtBounds
    activeFocusOnTab: true
    T.ScrollBar.vertical: ScrollBar {
    }

    // Inside, since the outside is clipped.
    FocusFrame {
        parent: root
        anchors.margins: 0
        visible: root.activeFocus
    }

    function scrollBy(distance) {
        contentY = Math.max(0, Math.min(contentY + distance, contentHeight - height))
    }

    Keys.onUpPressed: scrollBy(-3 * ux.textFontSize)
    Keys.onDownPressed: scrollBy(3 * ux.textFontSize)
    Keys.onPressed: {
        if (event.key === Qt.Key_PageUp || event.key === Qt.Key_PageDown) {
            scrollBy((event.key === Qt.Key_PageUp ? -0.9 : 0.9) * height)
            event.accepted = true
        }
    }
}
