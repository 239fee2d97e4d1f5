import QtQuick 2.15
import "Theme.js" as Theme

// Plates for the flags that are out, two in a row once there are several.
//   yellow, blue, black, blackAndWhite   dash_sessionFlag*
Grid {
    id: plates

    property bool yellow: false
    property bool blue: false
    property bool black: false
    property bool blackAndWhite: false

    readonly property bool several: yellow + blue + black + blackAndWhite > 1
    readonly property real plateWidth: several ? (width - spacing) / 2 : width
    readonly property real plateHeight: (height - spacing) / 2

    columns: several ? 2 : 1
    spacing: 3

    SessionFlag {
        visible: plates.black
        width: plates.plateWidth
        height: plates.plateHeight
        roomy: false
        text: plates.several ? "BLK" : "BLACK"
        cloth: Theme.black
        ink: Theme.white
        rim: Theme.white
    }

    SessionFlag {
        visible: plates.blackAndWhite
        width: plates.plateWidth
        height: plates.plateHeight
        roomy: false
        text: plates.several ? "B / W" : "BLK / WHT"
        cloth: Theme.black
        ink: Theme.white
        rim: Theme.white
    }

    SessionFlag {
        visible: plates.yellow
        width: plates.plateWidth
        height: plates.plateHeight
        roomy: false
        text: plates.several ? "YEL" : "YELLOW"
        cloth: Theme.yellow
        ink: Theme.inkOnBright
        rim: Theme.yellow
    }

    SessionFlag {
        visible: plates.blue
        width: plates.plateWidth
        height: plates.plateHeight
        roomy: false
        text: "BLUE"
        cloth: Theme.blue
        ink: Theme.white
        rim: Theme.blueRim
    }
}
