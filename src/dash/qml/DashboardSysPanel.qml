import QtQml 2.15
import QtQuick 2.15
import QtQuick.Controls 2.15 as BuiltInControls2
import DashboardFadeInOut 1.0

Rectangle {
    id: root

    property int recentTuneChangeCounter: 0
    property string recentMotionProfileName: ""
    property bool firstCall: true
    property int frameCounter: dash_frameCounter1000

    readonly property int headingFontSize: 20
    readonly property int smallFontSize: 14
    readonly property color textColor: "white"
    readonly property string fontFamily: "Lucida Sans Unicode"
    readonly property int margin: 20
    readonly property int barRadius: 3

    readonly property bool hasTune: dash_tuneName !== ""
    readonly property bool hasMotionProfile: dash_motionProfileName !== ""

    width: 480
    height: 272
    z: 1
    anchors.centerIn: parent
    scale: parent ? parent.width / width : 1.0
    color: "black"
    opacity: fade.opacity
    visible: fade.visible

    DashboardFadeInOut {
        id: fade

        fadeIn: 250
        fadeOut: 250
        duration: 2000
    }

    // The user gives the names, so all texts of them are plain and never read as markup.
    Column {
        x: root.margin
        y: root.margin
        width: root.width - 2 * root.margin
        spacing: 5

        Text {
            visible: root.hasTune
            color: root.textColor
            font.family: root.fontFamily
            font.pixelSize: root.smallFontSize
            textFormat: Text.PlainText
            text: qsTr("Category: %1").arg(dash_tuneGroup)
        }

        Text {
            width: parent.width
            visible: root.hasTune
            color: root.textColor
            font.family: root.fontFamily
            font.pixelSize: root.headingFontSize
            elide: Text.ElideMiddle
            textFormat: Text.PlainText
            text: dash_tuneName + " " + dash_tuneValueName
        }

        BuiltInControls2.ProgressBar {
            id: bar

            width: parent.width
            height: 30
            padding: 4
            visible: root.hasTune
            from: dash_tuneValueMin
            to: dash_tuneValueMax
            value: dash_tuneValueCurrent

            background: Rectangle {
                radius: root.barRadius
                color: "#e6e6e6"
            }
            contentItem: Item {
                Rectangle {
                    width: bar.visualPosition * parent.width
                    height: parent.height
                    radius: root.barRadius
                    color: "#FF6A00"
                }
            }

            Text {
                z: 1
                anchors.centerIn: parent
                color: "#000000"
                font.family: root.fontFamily
                font.pixelSize: root.headingFontSize
                text: dash_tuneValueCurrent.toFixed(dash_tuneValueIsInteger ? 0 : 2)
            }
        }

        Item {
            width: 10
            height: 10
            visible: root.hasTune
        }

        Text {
            visible: root.hasMotionProfile
            color: root.textColor
            font.family: root.fontFamily
            font.pixelSize: root.smallFontSize
            text: qsTr("Profile:")
        }

        Text {
            width: parent.width
            visible: root.hasMotionProfile
            color: root.textColor
            font.family: root.fontFamily
            font.pixelSize: root.headingFontSize
            elide: Text.ElideMiddle
            textFormat: Text.PlainText
            text: dash_motionProfileName
        }
    }

    // Runs in the middle of a publication, before its tune and its profile are written, so it
    // compares those of the publication before.
    onFrameCounterChanged: {
        const changed = recentTuneChangeCounter !== dash_tuneChangeCounter
                      || recentMotionProfileName !== dash_motionProfileName
        if (firstCall || changed) {
            recentTuneChangeCounter = dash_tuneChangeCounter
            recentMotionProfileName = dash_motionProfileName
        }
        if (firstCall)
            firstCall = false
        else if (changed)
            fade.show()
        fade.update()
    }
}
