import QtQuick 2.15

// The margins are the anchors', so that children may be as wide as the column.
Column {
    anchors.margins: ux.spacing
    spacing: ux.spacing
}
