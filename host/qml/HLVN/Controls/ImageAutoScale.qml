import QtQuick 2.15

// A picture at the size that it was drawn for, times the scale of the user interface; sharp, since
// it is drawn in vectors.
Image {
    property real drawnSize: 16

    width: Math.round(drawnSize * qt_scale)
    height: width
    sourceSize: Qt.size(width, height)
    fillMode: Image.PreserveAspectFit
    smooth: true
}
