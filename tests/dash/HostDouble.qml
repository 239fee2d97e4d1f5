import QtQuick 2.15

// Stands in for the host's window and records what a document asks of it.
QtObject {
    property string log
    property point cursor
    property int x: 100
    property int y: 200
    property int minimumWidth
    property int minimumHeight
    property var messages: []

    signal closeRequested

    function setTitle(title) {}
    function setCanBeMinimized(can) {}
    function setInitialSize(width, height) {}
    function cursorPosGlobal() { return cursor }
    function setAboutToBeMoved(moves) { log += moves ? "drag " : "drop " }
    function move(newX, newY) { log += "move " + newX + " " + newY + " " }
    function showFullScreen() { log += "full " }
    function showNormal() { log += "normal " }
}
