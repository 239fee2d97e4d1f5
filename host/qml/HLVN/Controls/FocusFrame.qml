import QtQuick 2.15

// Marks its parent as the item with the keyboard focus.
Rectangle {
    anchors.fill: parent
    anchors.margins: -ux.focusWidth - 1
    color: "transparent"
    radius: ux.radius + ux.focusWidth
    border.width: ux.focusWidth
    border.color: ux.focusColor
}
