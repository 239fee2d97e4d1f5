pragma Singleton
import QtQuick 2.15

// Measures of the controls, as the library's documents know them.
QtObject {
    readonly property real controlSpacing: ux.spacing
    readonly property real controlPanelMargin: ux.spacing
    readonly property real buttonRadius: ux.radius
    readonly property real controlBorderWidth: 1
    readonly property color controlBackgroundColor: ux.itemBackgroundColor
}
