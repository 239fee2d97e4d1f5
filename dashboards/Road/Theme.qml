import QtQuick 2.15

// Each component carries its own instance: a theme handed down would be null while the first
// bindings run, and a warning fails the load.
QtObject {
    readonly property color ink: "#f1f4f6"
    readonly property color muted: "#98a2ad"
    readonly property color ghost: "#2c333b"
    readonly property color faceTop: "#1e242a"
    readonly property color faceBottom: "#0b0e11"
    readonly property color metalDark: "#15191d"
    readonly property color metal: "#343b42"
    readonly property color night: "#060709"
    readonly property color accent: "#ff6a2b"
    readonly property color danger: "#e62f3b"
    readonly property color caution: "#ffb321"
    readonly property color good: "#43d17a"
    readonly property color black: "#050505"
    readonly property color white: "#ffffff"
    readonly property color yellow: "#ffd21a"
    readonly property color inkOnBright: "#101010"

    readonly property string fontFamily: regular.name
    readonly property int labelSize: 11

    readonly property FontLoader regular: FontLoader { source: "fonts/RobotoCondensed-Regular.ttf" }
    readonly property FontLoader bold: FontLoader { source: "fonts/RobotoCondensed-Bold.ttf" }
}
