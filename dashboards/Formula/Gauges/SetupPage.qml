import QtQuick 2.15
import "Theme.js" as Theme

// Shows what the driver has just adjusted, for a while after each change. Names are in capitals: the
// font's ligatures of small letters, as in "soft", use glyphs that Qt can't load.
Rectangle {
    id: page

    // About three seconds at the full rate.
    readonly property int publicationsShown: 75
    readonly property int publication: dash_frameCounter1000
    readonly property real change: dash_tuneChangeCounter
    readonly property real span: dash_tuneValueMax - dash_tuneValueMin
    property int remaining: 0

    function figure(value) {
        return Math.abs(value) < 100000 ? value.toFixed(dash_tuneValueIsInteger ? 0 : 2) : "–"
    }

    implicitWidth: 144
    implicitHeight: 166
    visible: remaining > 0
    color: Theme.settings

    onChangeChanged: remaining = publicationsShown
    onPublicationChanged: {
        if (remaining > 0)
            --remaining
    }
    // Changes from before the dashboard was loaded are old.
    Component.onCompleted: remaining = 0

    Rectangle {
        x: 2
        y: 22
        width: parent.width - 4
        height: parent.height - 24
        color: Theme.night
    }

    Label {
        x: 6
        width: parent.width - 12
        height: 22
        fits: true
        color: Theme.inkOnBright
        font.pixelSize: 15
        font.bold: true
        font.capitalization: Font.AllUppercase
        text: dash_tuneGroup === "" ? "SETUP" : dash_tuneGroup
    }

    Label {
        x: 8
        y: 26
        width: parent.width - 16
        height: 20
        fits: true
        color: Theme.ink
        font.pixelSize: 15
        font.capitalization: Font.AllUppercase
        text: dash_tuneValueName === "" ? dash_tuneName : dash_tuneName + " " + dash_tuneValueName
    }

    Label {
        x: 8
        y: 46
        width: parent.width - 16
        height: 58
        fits: true
        color: Theme.ink
        font.pixelSize: 44
        font.bold: true
        text: page.figure(dash_tuneValueCurrent)
    }

    Bar {
        x: 10
        y: 108
        width: parent.width - 20
        height: 10
        corner: 0
        value: page.span > 0 ? (dash_tuneValueCurrent - dash_tuneValueMin) / page.span : 0
        barColor: Theme.settings
    }

    Label {
        x: 10
        y: 120
        width: 60
        height: 16
        horizontalAlignment: Text.AlignLeft
        fits: true
        font.pixelSize: 12
        text: page.figure(dash_tuneValueMin)
    }

    Label {
        x: parent.width - 70
        y: 120
        width: 60
        height: 16
        horizontalAlignment: Text.AlignRight
        fits: true
        font.pixelSize: 12
        text: page.figure(dash_tuneValueMax)
    }

    Label {
        x: 8
        y: 142
        width: parent.width - 16
        height: 18
        fits: true
        color: Theme.settings
        font.pixelSize: 13
        font.capitalization: Font.AllUppercase
        text: dash_motionProfileName
    }
}
