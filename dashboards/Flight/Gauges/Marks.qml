import QtQuick 2.15
import "Theme.js" as Theme

// Marks and numerals around the middle of the parent, each at its angle in degrees clockwise from
// the top.
//   minor, major   the angles of the short and of the long marks
//   numerals       texts at the angles of the long ones; fewer or empty ones leave marks bare
//   turning        whether numerals stand upright to the rim, as on a card that turns
//   rim            the radius at which marks end
Item {
    id: marks

    property var minor: []
    property var major: []
    property var numerals: []
    property bool turning: false
    property real rim: width / 2 - 8
    property int numeralSize: 13
    property int longMark: 9
    property int shortMark: 5
    property color color: Theme.ink

    anchors.fill: parent

    Repeater {
        model: marks.minor

        Rectangle {
            x: marks.width / 2 - width / 2
            y: marks.height / 2 - marks.rim
            width: 1
            height: marks.shortMark
            antialiasing: true
            color: Theme.muted
            transform: Rotation { origin.x: 0.5; origin.y: marks.rim; angle: modelData }
        }
    }

    Repeater {
        model: marks.major

        Rectangle {
            x: marks.width / 2 - width / 2
            y: marks.height / 2 - marks.rim
            width: 2
            height: marks.longMark
            antialiasing: true
            color: marks.color
            transform: Rotation { origin.x: 1; origin.y: marks.rim; angle: modelData }
        }
    }

    Repeater {
        model: marks.numerals

        Label {
            readonly property real turn: marks.major[index] * Math.PI / 180
            // Wide and narrow numerals keep the same gap to the mark.
            readonly property real reach: marks.turning ? font.pixelSize * 0.4
                : Math.abs(Math.sin(turn)) * width / 2 + Math.abs(Math.cos(turn)) * font.pixelSize * 0.4
            readonly property real middle: marks.rim - marks.longMark - 1 - reach

            x: marks.width / 2 + Math.sin(turn) * middle - width / 2
            y: marks.height / 2 - Math.cos(turn) * middle - height / 2
            rotation: marks.turning ? marks.major[index] : 0
            color: marks.color
            font.pixelSize: marks.numeralSize
            font.bold: true
            text: modelData
        }
    }
}
