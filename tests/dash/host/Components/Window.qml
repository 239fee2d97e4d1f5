import QtQuick 2.15

Item {
    property string title
    property bool helpButtonVisible: false
    property bool minimizeButtonVisible: true
    property Item content
    property Item bottomPanel

    signal helpClicked
    signal closeClicked

    onContentChanged: content.parent = this
    onBottomPanelChanged: bottomPanel.parent = this
}
