import QtQuick 2.15
import "Theme.js" as Theme

// The session flags that are out, across the whole width; hidden without one. Each is marked by
// its pattern and its name, not by colour alone.
//   yellow, blue, black, blackAndWhite   dash_sessionFlag*
Rectangle {
    id: cloths

    property bool yellow: false
    property bool blue: false
    property bool black: false
    property bool blackAndWhite: false

    readonly property int count: yellow + blue + black + blackAndWhite
    readonly property real share: count > 0 ? width / count : width

    visible: count > 0
    color: Theme.night

    Row {
        FlagCloth {
            visible: cloths.black
            width: cloths.share
            height: cloths.height
            text: "BLACK"
            cloth: Theme.black
            ink: Theme.white
            rim: Theme.white
        }

        FlagCloth {
            visible: cloths.blackAndWhite
            width: cloths.share
            height: cloths.height
            text: cloths.share < 200 ? "BLK" : "BLACK"
            otherText: cloths.share < 200 ? "WHT" : "WHITE"
            cloth: Theme.black
            ink: Theme.white
            rim: Theme.white
        }

        FlagCloth {
            visible: cloths.yellow
            width: cloths.share
            height: cloths.height
            text: "YELLOW"
            bars: 4
            cloth: Theme.yellow
            ink: Theme.inkOnBright
            rim: Theme.yellow
        }

        FlagCloth {
            visible: cloths.blue
            width: cloths.share
            height: cloths.height
            text: "BLUE"
            bars: 1
            cloth: Theme.blue
            ink: Theme.white
            rim: Theme.blue
        }
    }
}
