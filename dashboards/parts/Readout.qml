import QtQuick 2.15
import "Theme.js" as Theme

// A value with its caption above and its unit behind. Right-aligned digits stay in place.
//   caption, text, unit   unit and caption may be empty
//   available   whether the value is known; otherwise a faint dash shows instead
//   valueSize, captionSize, unitSize, valueColor, bold
//   align       Text.AlignLeft, AlignHCenter or AlignRight of caption and value
Item {
    id: readout

    property string caption
    property string text
    property string unit
    property bool available: true
    property int valueSize: 24
    property int captionSize: Theme.labelSize
    property int unitSize: Theme.labelSize
    property color valueColor: Theme.ink
    property bool bold: true
    property int align: Text.AlignLeft

    readonly property real captionHeight: caption === "" ? 0 : captionSize + 2

    implicitWidth: 80
    implicitHeight: captionHeight + valueSize

    Label {
        width: parent.width
        height: readout.captionHeight
        horizontalAlignment: readout.align
        fits: true
        font.pixelSize: readout.captionSize
        text: readout.caption
    }

    Label {
        id: value

        readonly property real room: readout.width - (unitLabel.text === "" ? 0 : unitLabel.width + 3)

        // The unit follows the value unless the value is aligned right.
        x: readout.align === Text.AlignLeft ? 0
            : readout.align === Text.AlignRight ? room - width
            : (room - width) / 2
        y: readout.captionHeight
        width: readout.align === Text.AlignRight ? room : Math.min(implicitWidth, room)
        height: readout.height - readout.captionHeight
        horizontalAlignment: Text.AlignRight
        fits: true
        color: readout.available ? readout.valueColor : Theme.faint
        font.pixelSize: readout.valueSize
        font.bold: readout.bold
        text: readout.available ? readout.text : "–"
    }

    Label {
        id: unitLabel

        x: value.x + value.width + 3
        anchors.baseline: value.baseline
        font.pixelSize: readout.unitSize
        text: readout.available ? readout.unit : ""
    }
}
