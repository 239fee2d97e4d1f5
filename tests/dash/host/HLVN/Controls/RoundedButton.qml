import QtQuick 2.15

Item {
    property string text

    signal clicked

    implicitWidth: 80
    implicitHeight: 26
}
