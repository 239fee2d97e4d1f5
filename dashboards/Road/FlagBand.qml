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
    readonly property int fontSize: count > 2 ? 12 : 16

    Row {
        anchors.fill: parent
        spacing: band.gap

        SessionFlag {
            visible: band.black
            width: band.share
            height: band.height
            fontSize: band.fontSize
            text: "BLACK"
            cloth: "#050505"
            ink: "#ffffff"
            rim: "#ffffff"
        }

        SessionFlag {
            visible: band.blackAndWhite
            width: band.share
            height: band.height
            fontSize: band.fontSize
            text: band.count > 2 ? "BLK/WHT" : "BLACK / WHITE"
            cloth: "#050505"
            ink: "#ffffff"
            rim: "#ffffff"
            divided: true
        }

        SessionFlag {
            visible: band.yellow
            width: band.share
            height: band.height
            fontSize: band.fontSize
            text: "YELLOW"
            cloth: "#ffd21a"
            ink: "#101010"
            rim: "#ffd21a"
        }

        SessionFlag {
            visible: band.blue
            width: band.share
            height: band.height
            fontSize: band.fontSize
            text: "BLUE"
            cloth: "#1f5fe0"
            ink: "#ffffff"
            rim: "#5c8ff5"
        }
    }
}
