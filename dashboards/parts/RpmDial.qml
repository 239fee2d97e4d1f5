import QtQuick 2.15

// A dial for any engine, from a ship's to a racing car's.
//   rpm, maxRpm   as published; a limit outside 501 to 99999 counts as unknown
//   yellow, red   thresholds in percent of maxRpm; 0 is none
//   redline       whether the red threshold is reached
Dial {
    id: dial

    property real rpm: 0
    property real maxRpm: 0
    property int yellow: 0
    property int red: 0

    readonly property bool knowsMaxRpm: maxRpm > 500 && maxRpm < 100000
    readonly property real limit: knowsMaxRpm ? maxRpm : 10000
    readonly property bool redline: knowsMaxRpm && red > 0 && rpm * 100 >= maxRpm * red

    value: rpm
    // A slow engine gets a scale in hundreds: it has too few thousands.
    majorStep: limit <= 1000 ? 100
        : limit < 2000 ? 200
        : limit <= 4000 ? 500 : 1000 * Math.ceil(limit / 10000)
    // Guards the moment in which only one of the two belongs to the next vehicle.
    majorCount: Math.min(10, Math.ceil(limit / majorStep))
    minorPerMajor: majorStep === 500 ? 5 : 4
    numeralUnit: majorStep < 1000 ? 100 : 1000
    numeralSize: 19
    cautionFrom: knowsMaxRpm ? limit * yellow / 100 : 0
    dangerFrom: knowsMaxRpm ? limit * red / 100 : 0

    Label {
        anchors.horizontalCenter: parent.horizontalCenter
        y: dial.height * 0.275
        text: "×" + dial.numeralUnit + " r/min"
    }
}
