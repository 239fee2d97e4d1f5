import QtQuick 2.15

Item {
    property string text
    property bool checked: false

    implicitWidth: 150
    implicitHeight: 22
}
