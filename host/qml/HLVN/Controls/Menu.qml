import QtQuick 2.15
import QtQuick.Templates 2.15 as T

// A context menu.
T.Menu {
    id: root

    implicitWidth: 240 * qt_scale
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    padding: ux.spacing / 2
    margins: ux.spacing / 2
    overlap: 1
    focus: true

    contentItem: ListView {
        implicitHeight: contentHeight
        model: root.contentModel
        interactive: false
        currentIndex: root.currentIndex
    }

    background: Rectangle {
        radius: ux.radius
        color: ux.itemBackgroundColor
        border { width: 1; color: ux.itemBorderColor }
    }
}
