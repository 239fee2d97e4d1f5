import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Window 2.15

// A drop-down list. The model's objects have a `text` and a `value`.
T.ComboBox {
    id: root

    // The shown value. The user's choice is emitted by `chosen` and shown once it is set here.
    property var selectedValue
    property bool entered: false

    signal chosen(var value)

    function showSelected() {
        currentIndex = indexOfValue(selectedValue)
    }

    implicitWidth: 200 * qt_scale
    implicitHeight: ux.controlHeight
    leftPadding: ux.spacing
    rightPadding: arrow.width + 2 * ux.spacing
    textRole: "text"
    valueRole: "value"
    font.family: ux.primaryFontFamily
    font.pixelSize: ux.textFontSize
    hoverEnabled: true
    opacity: enabled ? 1 : 0.5
    // A wheel that scrolls the page must not change what it passes over.
    wheelEnabled: false
    onSelectedValueChanged: showSelected()
    // A new model selects its first entry.
    onModelChanged: showSelected()
    onActivated: {
        root.chosen(valueAt(index))
        showSelected()
    }
    Component.onCompleted: showSelected()
    Keys.onPressed: {
        entered = !popup.visible && (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
        event.accepted = entered
    }
    // Opened by the press, the list would be closed by the release.
    Keys.onReleased: {
        if (entered)
            popup.open()
        event.accepted = entered
        entered = false
    }

    contentItem: Label {
        text: root.displayText
        font: root.font
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }

    indicator: Item {
        id: arrow

        x: root.width - width - ux.spacing
        y: Math.round((root.height - height) / 2)
        width: Math.round(10 * qt_scale)
        height: Math.round(7 * qt_scale)

        // A chevron of two strokes.
        Repeater {
            model: 2

            Rectangle {
                x: index === 0 ? -width * 0.08 : arrow.width - width * 0.92
                anchors.verticalCenter: parent.verticalCenter
                width: arrow.width * 0.72
                height: Math.max(1, 1.5 * qt_scale)
                radius: height / 2
                rotation: index === 0 ? 45 : -45
                antialiasing: true
                color: root.hovered ? ux.textLightColor : ux.textDarkColor
            }
        }
    }

    background: Rectangle {
        radius: ux.radius
        color: root.down || root.popup.visible ? ux.pressedColor
                                               : root.hovered ? ux.hoverColor
                                                              : ux.itemBackgroundColor2
        border.color: ux.itemBorderColor

        FocusFrame {
            visible: root.activeFocus && root.focusReason !== Qt.MouseFocusReason
        }
    }

    delegate: T.ItemDelegate {
        id: entry

        width: ListView.view.width
        implicitHeight: ux.controlHeight
        leftPadding: ux.spacing
        rightPadding: ux.spacing
        highlighted: root.highlightedIndex === index
        hoverEnabled: true
        text: model[root.textRole] !== undefined ? model[root.textRole] : modelData[root.textRole]
        font: root.font

        contentItem: Label {
            text: entry.text
            font: entry.font
            color: root.currentIndex === index ? ux.accentColor : ux.textLightColor
            verticalAlignment: Text.AlignVCenter
            elide: Text.ElideRight
        }

        background: Rectangle {
            radius: ux.radius
            color: entry.highlighted ? ux.hoverColor : "transparent"
        }
    }

    // Below the field, or above it where that has more room and the list needs it; never over it.
    popup: T.Popup {
        readonly property real gap: ux.spacing / 4
        readonly property real wanted: Math.min(contentItem.implicitHeight + topPadding + bottomPadding,
                                                8.5 * ux.controlHeight)
        property real above
        property real below
        readonly property bool upward: wanted > below && above > below

        y: upward ? -height - gap : root.height + gap
        width: root.width
        implicitHeight: Math.min(wanted, upward ? above : below)
        padding: ux.spacing / 2
        onAboutToShow: {
            const top = root.mapToItem(null, 0, 0).y
            above = top - gap - ux.spacing / 2
            below = root.Window.height - top - root.height - gap - ux.spacing / 2
        }

        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            model: root.delegateModel
            currentIndex: root.highlightedIndex
            boundsBehavior: Flickable.StopAtBounds
            highlightMoveDuration: 0
            T.ScrollBar.vertical: ScrollBar {
            }
        }

        background: Rectangle {
            radius: ux.radius
            color: ux.itemBackgroundColor
            border.color: ux.itemBorderColor
        }
    }
}
