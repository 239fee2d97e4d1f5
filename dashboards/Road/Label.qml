import QtQuick 2.15

Text {
    id: label

    readonly property Theme theme: Theme {}

    color: theme.muted
    font.family: theme.fontFamily
    font.pixelSize: theme.labelSize
    textFormat: Text.PlainText
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
}
