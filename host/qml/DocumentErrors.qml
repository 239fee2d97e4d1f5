import QtQuick 2.15
import "HLVN/Controls"

// Shown instead of a document that failed to load.
Rectangle {
    color: ux.windowBackground

    FlickableV {
        id: page

        anchors.fill: parent
        anchors.margins: 2 * ux.spacing
        contentHeight: text.height

        Column {
            id: text

            width: page.width
            spacing: ux.spacing

            LabelMultiLine {
                width: parent.width
                font.pixelSize: ux.h2FontSize
                text: qsTr("This window can't be shown")
            }

            LabelMultiLine {
                width: parent.width
                color: ux.textDarkColor
                wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                text: qt_window.documentErrors
            }
        }
    }

    Component.onCompleted: {
        qt_window.setTitle(qsTr("Error"))
        qt_window.setInitialSize(640 * qt_scale, 320 * qt_scale)
    }
}
