import QtQuick 2.15

// Marks the item that has the keyboard; lies around its parent.
Rectangle {
    anchors.fill: parent
    anchors.margins: -ux.focusWidth - 1
    color: "transparent"
    radius: ux.radius + ux.focusWidth
    border.width: ux.focusWidth
    border.color: ux.focusColor
}
