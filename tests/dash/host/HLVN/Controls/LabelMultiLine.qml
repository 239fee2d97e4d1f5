import QtQuick 2.15

Text {
    wrapMode: Text.WordWrap
}
