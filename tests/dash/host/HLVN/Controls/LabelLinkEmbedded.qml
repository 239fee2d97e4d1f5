import QtQuick 2.15

Text {
    id: root

    property alias richText: root.text

    textFormat: Text.RichText
}
