import QtQuick 2.15

Label {
    wrapMode: Text.WordWrap
}
