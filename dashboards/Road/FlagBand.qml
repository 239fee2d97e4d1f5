import QtQuick 2.15

// The session flags that are out share the width. Each is told by its pattern and its name, not by
// colour alone.
Item {
    id: band

    property bool yellow: false
    property bool blue: false
    property bool black: false
    property bool blackAndWhite: false

    readonly property int count: yellow + blue + black + blackAndWhite
    readonly property real gap: 4
    readonly property real share: count > 0 ? (width - gap * (count - 1)) / count : width
    readonly property bool roomy: count < 3
    readonly property Theme theme: Theme {}

    Row {
        anchors.fill: parent
        spacing: band.gap

        SessionFlag {
            visible: band.black
            width: band.share
            height: band.height
            roomy: band.roomy
            text: "BLACK"
            cloth: band.theme.black
            ink: band.theme.white
            rim: band.theme.white
        }

        SessionFlag {
            visible: band.blackAndWhite
            width: band.share
            height: band.height
            roomy: band.roomy
            text: band.count < 2 ? "BLACK / WHITE" : "BLK / WHT"
            cloth: band.theme.black
            ink: band.theme.white
            rim: band.theme.white
            divided: true
        }

        SessionFlag {
            visible: band.yellow
            width: band.share
            height: band.height
            roomy: band.roomy
            text: "YELLOW"
            cloth: band.theme.yellow
            ink: band.theme.inkOnBright
            rim: band.theme.yellow
        }

        SessionFlag {
            visible: band.blue
            width: band.share
            height: band.height
            roomy: band.roomy
            text: "BLUE"
            cloth: "#1f5fe0"
            ink: band.theme.white
            rim: "#5c8ff5"
        }
    }
}
