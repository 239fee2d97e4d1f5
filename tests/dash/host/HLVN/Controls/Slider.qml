import QtQuick 2.15

Item {
    property real minimumValue: 0
    property real maximumValue: 1
    property real stepSize: 0
    property real value: 0

    implicitWidth: 100
    implicitHeight: 22
}
