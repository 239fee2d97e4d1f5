pragma Singleton
import QtQuick 2.15

QtObject {
    readonly property int controlSpacing: 8
    readonly property int controlPanelMargin: 6
    readonly property int buttonRadius: 4
    readonly property int controlBorderWidth: 1
    readonly property color controlBackgroundColor: "#f0f0f0"
}
