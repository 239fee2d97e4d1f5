import QtQuick 2.15
import "Theme.js" as Theme

// The four wheels, one column each.
Item {
    id: table

    readonly property real columnWidth: (width - temperature.labelWidth) / 4

    TableLine {
        id: head

        width: table.width
        heading: true
        labelWidth: temperature.labelWidth
        label: "TYRE"
        texts: ["FL", "FR", "RL", "RR"]
    }

    Column {
        y: head.height
        width: table.width

        CornerLine {
            id: temperature

            width: table.width
            label: "TEMP"
            unit: "°C"
            coldBelow: 70
            hotAbove: 105
            fl: dash_tyreTemp_C_FL
            fr: dash_tyreTemp_C_FR
            rl: dash_tyreTemp_C_RL
            rr: dash_tyreTemp_C_RR
            knowsFl: dash_tyreTemp_C_FL_Available
            knowsFr: dash_tyreTemp_C_FR_Available
            knowsRl: dash_tyreTemp_C_RL_Available
            knowsRr: dash_tyreTemp_C_RR_Available
        }

        CornerLine {
            width: table.width
            label: "PRESS"
            unit: "kPa"
            fl: dash_tyrePressure_kPa_FL
            fr: dash_tyrePressure_kPa_FR
            rl: dash_tyrePressure_kPa_RL
            rr: dash_tyrePressure_kPa_RR
            knowsFl: dash_tyrePressure_kPa_FL_Available
            knowsFr: dash_tyrePressure_kPa_FR_Available
            knowsRl: dash_tyrePressure_kPa_RL_Available
            knowsRr: dash_tyrePressure_kPa_RR_Available
        }

        CornerLine {
            width: table.width
            label: "WEAR"
            unit: "%"
            fl: dash_tyreWear_Percent_FL
            fr: dash_tyreWear_Percent_FR
            rl: dash_tyreWear_Percent_RL
            rr: dash_tyreWear_Percent_RR
            knowsFl: dash_tyreWear_Percent_FL_Available
            knowsFr: dash_tyreWear_Percent_FR_Available
            knowsRl: dash_tyreWear_Percent_RL_Available
            knowsRr: dash_tyreWear_Percent_RR_Available
        }

        CornerLine {
            width: table.width
            label: "BRAKE"
            unit: "°C"
            hotAbove: 750
            fl: dash_brakeTemp_C_FL
            fr: dash_brakeTemp_C_FR
            rl: dash_brakeTemp_C_RL
            rr: dash_brakeTemp_C_RR
            knowsFl: dash_brakeTemp_C_FL_Available
            knowsFr: dash_brakeTemp_C_FR_Available
            knowsRl: dash_brakeTemp_C_RL_Available
            knowsRr: dash_brakeTemp_C_RR_Available
        }
    }

    Label {
        y: 121
        width: temperature.labelWidth
        height: 16
        horizontalAlignment: Text.AlignLeft
        font.pixelSize: 10
        text: "SLIP"
    }

    Repeater {
        model: 4

        Rectangle {
            readonly property bool slipping: [dash_wheelSlip_FL, dash_wheelSlip_FR,
                                              dash_wheelSlip_RL, dash_wheelSlip_RR][index]

            x: temperature.labelWidth + index * table.columnWidth + 4
            y: 122
            width: table.columnWidth - 4
            height: 14
            radius: 2
            antialiasing: true
            color: slipping ? Theme.accent : "transparent"
            border.width: 1
            border.color: slipping ? Theme.accent : Theme.ghost
        }
    }

    Cell {
        y: 146
        width: table.width
        labelWidth: 60
        known: dash_brakeBias_Percent_Available
        label: "BRAKE BIAS"
        text: String(dash_brakeBias_Percent).replace("-", "−") + " %"
    }
}
