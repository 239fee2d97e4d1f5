import QtQuick 2.15
import "Theme.js" as Theme

// An upright bar with a letter below it.
//   label, percent (0 to 100), color, barWidth, labelSize
Item {
    id: pedal

    property string label
    property int percent: 0
    property color color: Theme.ink
    property real barWidth: 8
    property int labelSize: Theme.labelSize

    implicitWidth: barWidth + 4
    implicitHeight: 40

    Bar {
        anchors.horizontalCenter: parent.horizontalCenter
        width: pedal.barWidth
        height: parent.height - pedal.labelSize - 2
        vertical: true
        value: pedal.percent / 100
        barColor: pedal.color
    }

    Label {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        height: pedal.labelSize + 1
        font.pixelSize: pedal.labelSize
        text: pedal.label
    }
}
