import QtQuick 2.15

Flickable {
    flickableDirection: Flickable.VerticalFlick
}
