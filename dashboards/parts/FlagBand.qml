import QtQuick 2.15
import "Theme.js" as Theme

// The session flags that are out share the width; hidden without one. Each is marked by its
// pattern and its name, not by colour alone.
//   yellow, blue, black, blackAndWhite   dash_sessionFlag*
Item {
    id: band

    property bool yellow: false
    property bool blue: false
    property bool black: false
    property bool blackAndWhite: false

    readonly property int count: yellow + blue + black + blackAndWhite
    readonly property real gap: 4
    readonly property real share: count > 0 ? (width - gap * (count - 1)) / count : width
    // Room for a symbol and for whole words.
    readonly property bool roomy: share >= 130

    implicitWidth: 284
    implicitHeight: 22

    Row {
        anchors.fill: parent
        spacing: band.gap

        SessionFlag {
            visible: band.black
            width: band.share
            height: band.height
            roomy: band.roomy
            text: "BLACK"
            cloth: Theme.black
            ink: Theme.white
            rim: Theme.white
        }

        SessionFlag {
            visible: band.blackAndWhite
            width: band.share
            height: band.height
            roomy: band.roomy
            text: band.share >= 180 ? "BLACK / WHITE" : "BLK / WHT"
            cloth: Theme.black
            ink: Theme.white
            rim: Theme.white
            divided: true
        }

        SessionFlag {
            visible: band.yellow
            width: band.share
            height: band.height
            roomy: band.roomy
            text: "YELLOW"
            cloth: Theme.yellow
            ink: Theme.inkOnBright
            rim: Theme.yellow
        }

        SessionFlag {
            visible: band.blue
            width: band.share
            height: band.height
            roomy: band.roomy
            text: "BLUE"
            cloth: Theme.blue
            ink: Theme.white
            rim: Theme.blueRim
        }
    }
}
