import QtQuick 2.15

Column {
    spacing: 8
}
