import QtQuick 2.15

// The look of the host's windows, known to every document as `ux`. Lengths are in pixels at the
// scale of the user interface.
QtObject {
    id: theme

    readonly property FontLoader regular: FontLoader { source: "qrc:/fonts/Roboto-Regular.ttf" }
    readonly property FontLoader bold: FontLoader { source: "qrc:/fonts/Roboto-Bold.ttf" }
    readonly property string primaryFontFamily: regular.name

    // Headings, largest first. The smallest also serves notes, captions and the list beside
    // the editor's preview.
    readonly property int h1FontSize: Math.round(26 * qt_scale)
    readonly property int h2FontSize: Math.round(20 * qt_scale)
    readonly property int h3FontSize: Math.round(16 * qt_scale)
    readonly property int h4FontSize: Math.round(12 * qt_scale)
    readonly property int textFontSize: Math.round(14 * qt_scale)

    // Surfaces, from the farthest to the nearest.
    readonly property color windowBackground: "#15181C"
    readonly property color popupInnerBackground: "#1A1E23"
    readonly property color itemBackgroundColor: "#22272E"
    readonly property color itemBackgroundColor2: "#2B313A"
    readonly property color itemBackgroundColor3: "#0E1013"
    readonly property color hoverColor: "#343C46"
    readonly property color pressedColor: "#1E232A"
    readonly property color itemBorderColor: "#3A424D"

    // Texts: primary, secondary, disabled.
    readonly property color textLightColor: "#F1F3F5"
    readonly property color textDarkColor: "#AEB8C2"
    readonly property color textDisabledColor: "#6B7580"

    readonly property color accentColor: "#4C9FE0"
    readonly property color accentTextColor: "#0C1116"
    readonly property color focusColor: "#8CC6F5"
    readonly property color goodColor: "#62C088"
    readonly property color warningColor: "#E9B04A"
    readonly property color dangerColor: "#E2645C"
    readonly property color shadeColor: "#A0000000" // Over what a dialog blocks.

    readonly property real spacing: 8 * qt_scale
    readonly property real controlHeight: Math.round(30 * qt_scale)
    readonly property real radius: 5 * qt_scale
    readonly property real focusWidth: Math.max(1, Math.round(2 * qt_scale))
    readonly property int toolTipDelay: 600
}
