import QtQuick 2.15
import "qrc:/qml/HLVN/Controls" as HLVN

// The card of one dashboard. Hundreds of these scroll by, so each is kept light.
Item {
    id: root

    // The roles of the model.
    required property int index
    required property int profileId
    required property string name
    required property string preview
    required property bool builtIn
    required property bool active
    required property int vehicleCount

    property bool current: false // What keys act on.
    property bool focused: false // Current, and the cards have the keyboard focus.
    readonly property bool pictureReady: image.status === Image.Ready
    readonly property string kind: builtIn ? qsTr("Built-in") : qsTr("Yours")
    readonly property string vehicles: vehicleCount === 0 ? qsTr("no vehicles")
                                                       : qsTr("%n vehicle(s)", "", vehicleCount)

    signal activated
    signal menuRequested(real x, real y)

    Accessible.role: Accessible.ListItem
    Accessible.name: active ? qsTr("%1, active, %2, %3").arg(name).arg(kind).arg(vehicles)
                            : qsTr("%1, %2, %3").arg(name).arg(kind).arg(vehicles)
    Accessible.focusable: true
    Accessible.focused: focused
    Accessible.selected: active
    Accessible.onPressAction: activated()

    Rectangle {
        id: card

        anchors { fill: parent; margins: ux.spacing }
        radius: ux.radius
        color: area.containsMouse ? ux.itemBackgroundColor2 : ux.itemBackgroundColor
        border {
            width: root.current ? ux.focusWidth : 1
            color: root.focused ? ux.focusColor : root.current ? ux.textDisabledColor : ux.itemBorderColor
        }
    }

    Rectangle {
        id: picture

        anchors { left: card.left; right: card.right; top: card.top; margins: ux.spacing / 2 }
        height: Math.round(width * 272 / 480)
        color: "black"

        Image {
            id: image

            anchors.fill: parent
            asynchronous: true
            source: root.preview
            sourceSize { width: 360 * qt_scale; height: 204 * qt_scale }
            fillMode: Image.PreserveAspectFit
        }

        HLVN.Label {
            anchors.centerIn: parent
            // The provider gives a single pixel for an unreadable picture.
            visible: root.preview === "" || (image.status === Image.Ready && image.implicitWidth <= 1)
            text: qsTr("No preview")
            color: ux.textDarkColor
        }
    }

    Rectangle {
        anchors { right: picture.right; top: picture.top; margins: ux.spacing / 2 }
        width: activeLabel.implicitWidth + 1.5 * ux.spacing
        height: activeLabel.implicitHeight + 0.5 * ux.spacing
        radius: height / 2
        color: ux.accentColor
        visible: root.active

        HLVN.Label {
            id: activeLabel

            anchors.centerIn: parent
            text: qsTr("Active")
            color: ux.accentTextColor
            font { pixelSize: ux.h4FontSize; weight: Font.Bold }
        }
    }

    HLVN.Label {
        id: nameLabel

        anchors {
            left: card.left
            leftMargin: ux.spacing
            right: more.left
            top: picture.bottom
            topMargin: ux.spacing * 0.75
        }
        text: root.name
        horizontalAlignment: Text.AlignLeft
        elide: Text.ElideRight
        font.weight: Font.Bold
    }

    HLVN.Label {
        anchors { left: nameLabel.left; right: nameLabel.right; top: nameLabel.bottom; topMargin: 2 * qt_scale }
        text: root.kind + "  \u00b7  " + root.vehicles
        color: ux.textDarkColor
        elide: Text.ElideRight
        font.pixelSize: ux.h4FontSize
    }

    MouseArea {
        id: area

        anchors.fill: card
        hoverEnabled: true
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onClicked: {
            if (mouse.button === Qt.RightButton)
                root.menuRequested(mouse.x, mouse.y)
            else
                root.activated()
        }
    }

    HLVN.Label {
        id: more

        anchors { right: card.right; bottom: card.bottom; margins: ux.spacing / 2 }
        width: 32 * qt_scale
        height: 32 * qt_scale
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        text: "\u00b7\u00b7\u00b7"
        font.pixelSize: ux.h3FontSize
        color: moreArea.containsMouse ? ux.textLightColor : ux.textDarkColor
        Accessible.role: Accessible.ButtonMenu
        Accessible.name: qsTr("Actions for %1").arg(root.name)
        Accessible.onPressAction: root.menuRequested(more.x, more.y)

        MouseArea {
            id: moreArea

            anchors.fill: parent
            hoverEnabled: true
            onClicked: root.menuRequested(more.x + more.width / 2, more.y + more.height / 2)
        }
    }
}
