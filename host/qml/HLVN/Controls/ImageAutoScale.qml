import QtQuick 2.15

// An icon at the size that it was drawn for, times the scale of the user interface. The pictures
// have pixels to spare, so that they stay sharp at every scale.
Image {
    property real drawnSize: 16

    width: Math.round(drawnSize * qt_scale)
    height: width
    fillMode: Image.PreserveAspectFit
    smooth: true
    mipmap: true
}
