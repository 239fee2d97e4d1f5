import QtQuick 2.15
import "Theme.js" as Theme

// The driver aids: their settings, and whether they act now.
Column {
    id: table

    TableLine {
        width: table.width
        heading: true
        label: "AIDS"
        texts: [""]
    }

    Cell {
        width: table.width
        label: "ABS STEP"
        known: dash_abs_Level_Available
        text: dash_abs_Level
    }

    Cell {
        width: table.width
        label: "ABS"
        known: dash_absInAction_Available
        lit: dash_absInAction
        text: dash_absInAction ? "ACTS" : "OFF"
    }

    Cell {
        width: table.width
        label: "TC STEP"
        known: dash_tractionControl_Level_Available
        text: dash_tractionControl_Level
    }

    Cell {
        width: table.width
        label: "TC"
        known: dash_tcInAction_Available
        lit: dash_tcInAction
        text: dash_tcInAction ? "ACTS" : "OFF"
    }

    Cell {
        width: table.width
        label: "DRS"
        known: dash_drsAvailable || dash_drsEngaged
        lit: dash_drsEngaged
        text: dash_drsEngaged ? "OPEN" : "READY"
    }
}
