import QtQuick 2.15

Item {
    property alias buttons: row.data

    Row {
        id: row
    }
}
