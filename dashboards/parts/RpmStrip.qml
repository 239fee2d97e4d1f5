import QtQuick 2.15
import "Theme.js" as Theme

// Engine speed as a row of lamps, coloured by the thresholds.
//   rpm, maxRpm   as published; a limit outside 501 to 99999 counts as unknown
//   green, yellow, red, blinking   thresholds in percent of maxRpm; 0 is none
//   flash         whether all lamps show the flash colour now, dash_rpmBlink
//   from          share of maxRpm where the first lamp goes on
//   lamps, gap, corner (radius)
//   shape         heights follow the zones: lamps below the first threshold are half as high
Item {
    id: strip

    property real rpm: 0
    property real maxRpm: 0
    property int green: 0
    property int yellow: 0
    property int red: 0
    property int blinking: 0
    property bool flash: false
    property real from: 0
    property int lamps: 20
    property real gap: 3
    property real corner: 2
    property bool shape: false
    property color restColor: Theme.muted
    property color outColor: Theme.ghost

    readonly property bool knowsMaxRpm: maxRpm > 500 && maxRpm < 100000
    readonly property real limit: knowsMaxRpm ? maxRpm : 10000
    readonly property int lit: rpm > 0
        ? Math.max(0, Math.min(lamps, Math.floor((rpm / limit - from) / (1 - from) * lamps + 0.001))) : 0
    readonly property real lampWidth: (width - gap * (lamps - 1)) / lamps

    function reaches(share, percent) {
        return percent > 0 && share * 100 >= percent - 0.001
    }

    function colorOf(share) {
        return reaches(share, blinking) ? Theme.flash
            : reaches(share, red) ? Theme.danger
            : reaches(share, yellow) ? Theme.caution
            : reaches(share, green) ? Theme.good
            : restColor
    }

    implicitWidth: 300
    implicitHeight: 14

    Repeater {
        model: strip.lamps

        Rectangle {
            // The engine speed at which this lamp goes on.
            readonly property real share: strip.from + (1 - strip.from) * (index + 1) / strip.lamps
            readonly property color tone: strip.colorOf(share)
            readonly property bool low: strip.shape && !strip.reaches(share, strip.green)

            x: index * (strip.lampWidth + strip.gap)
            y: low ? height : 0
            width: strip.lampWidth
            height: low ? strip.height / 2 : strip.height
            radius: strip.corner
            antialiasing: true
            color: strip.flash ? Theme.flash : index < strip.lit ? tone : strip.outColor
        }
    }
}
