import QtQuick 2.15

Text {
    color: ux.textLightColor
    linkColor: ux.accentColor
    font.family: ux.primaryFontFamily
    font.pixelSize: ux.h4FontSize
    textFormat: Text.PlainText
}
