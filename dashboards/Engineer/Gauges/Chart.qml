import QtQuick 2.15
import "Theme.js" as Theme

// Chart paper with its grid.
//   columns, rows   how many fields it has
Rectangle {
    id: chart

    property int columns: 6
    property int rows: 4

    color: Theme.chart

    Repeater {
        model: chart.columns - 1

        Rectangle {
            x: (index + 1) * chart.width / chart.columns - 0.5
            width: 1
            height: chart.height
            color: Theme.grid
        }
    }

    Repeater {
        model: chart.rows - 1

        Rectangle {
            y: (index + 1) * chart.height / chart.rows - 0.5
            width: chart.width
            height: 1
            color: Theme.grid
        }
    }

    Rectangle {
        anchors.fill: parent
        anchors.margins: -1
        color: "transparent"
        border.width: 1
        border.color: Theme.muted
    }
}
