import QtQuick 2.15

Text {
    color: ux.textLightColor
    linkColor: ux.accentColor
    font.family: ux.primaryFontFamily
    font.pixelSize: ux.textFontSize
    textFormat: Text.PlainText
}
