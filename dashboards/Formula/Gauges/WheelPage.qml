import QtQuick 2.15
import "Theme.js" as Theme

// The wheels: tyre and brake temperatures come first while driving, pressures and wear at a standstill.
//   standing   whether the car is stopped
Item {
    id: page

    property bool standing: false

    // Without a sensor there is no value.
    function pressure(value) {
        return value > 9999 ? "–" : value
    }

    implicitWidth: 144
    implicitHeight: 166

    Grid {
        visible: !page.standing
        columns: 2
        spacing: 2

        TyreCell {
            caption: "FL"
            unit: "°"
            low: 70
            high: 105
            value: dash_tyreTemp_C_FL
            known: dash_tyreTemp_C_FL_Available
            detail: dash_tyrePressure_kPa_FL_Available ? page.pressure(dash_tyrePressure_kPa_FL) + " kPa" : ""
            tread: dash_tyreWear_Percent_FL_Available ? Math.max(0, 1 - dash_tyreWear_Percent_FL / 100) : -1
            marked: dash_wheelSlip_FL
        }

        TyreCell {
            caption: "FR"
            unit: "°"
            low: 70
            high: 105
            value: dash_tyreTemp_C_FR
            known: dash_tyreTemp_C_FR_Available
            detail: dash_tyrePressure_kPa_FR_Available ? page.pressure(dash_tyrePressure_kPa_FR) + " kPa" : ""
            tread: dash_tyreWear_Percent_FR_Available ? Math.max(0, 1 - dash_tyreWear_Percent_FR / 100) : -1
            marked: dash_wheelSlip_FR
        }

        TyreCell {
            caption: "RL"
            unit: "°"
            low: 70
            high: 105
            value: dash_tyreTemp_C_RL
            known: dash_tyreTemp_C_RL_Available
            detail: dash_tyrePressure_kPa_RL_Available ? page.pressure(dash_tyrePressure_kPa_RL) + " kPa" : ""
            tread: dash_tyreWear_Percent_RL_Available ? Math.max(0, 1 - dash_tyreWear_Percent_RL / 100) : -1
            marked: dash_wheelSlip_RL
        }

        TyreCell {
            caption: "RR"
            unit: "°"
            low: 70
            high: 105
            value: dash_tyreTemp_C_RR
            known: dash_tyreTemp_C_RR_Available
            detail: dash_tyrePressure_kPa_RR_Available ? page.pressure(dash_tyrePressure_kPa_RR) + " kPa" : ""
            tread: dash_tyreWear_Percent_RR_Available ? Math.max(0, 1 - dash_tyreWear_Percent_RR / 100) : -1
            marked: dash_wheelSlip_RR
        }

        TyreCell {
            caption: "BRK FL"
            unit: "°"
            calm: Theme.ghost
            low: 150
            high: 750
            value: dash_brakeTemp_C_FL
            known: dash_brakeTemp_C_FL_Available
        }

        TyreCell {
            caption: "BRK FR"
            unit: "°"
            calm: Theme.ghost
            low: 150
            high: 750
            value: dash_brakeTemp_C_FR
            known: dash_brakeTemp_C_FR_Available
        }

        TyreCell {
            caption: "BRK RL"
            unit: "°"
            calm: Theme.ghost
            low: 150
            high: 750
            value: dash_brakeTemp_C_RL
            known: dash_brakeTemp_C_RL_Available
        }

        TyreCell {
            caption: "BRK RR"
            unit: "°"
            calm: Theme.ghost
            low: 150
            high: 750
            value: dash_brakeTemp_C_RR
            known: dash_brakeTemp_C_RR_Available
        }
    }

    Grid {
        visible: page.standing
        columns: 2
        spacing: 2

        Cell {
            width: 71
            caption: "kPa FL"
            text: page.pressure(dash_tyrePressure_kPa_FL)
            known: dash_tyrePressure_kPa_FL_Available
        }

        Cell {
            width: 71
            caption: "kPa FR"
            text: page.pressure(dash_tyrePressure_kPa_FR)
            known: dash_tyrePressure_kPa_FR_Available
        }

        Cell {
            width: 71
            caption: "kPa RL"
            text: page.pressure(dash_tyrePressure_kPa_RL)
            known: dash_tyrePressure_kPa_RL_Available
        }

        Cell {
            width: 71
            caption: "kPa RR"
            text: page.pressure(dash_tyrePressure_kPa_RR)
            known: dash_tyrePressure_kPa_RR_Available
        }

        Cell {
            width: 71
            caption: "WEAR FL"
            unit: "%"
            text: dash_tyreWear_Percent_FL
            known: dash_tyreWear_Percent_FL_Available
        }

        Cell {
            width: 71
            caption: "WEAR FR"
            unit: "%"
            text: dash_tyreWear_Percent_FR
            known: dash_tyreWear_Percent_FR_Available
        }

        Cell {
            width: 71
            caption: "WEAR RL"
            unit: "%"
            text: dash_tyreWear_Percent_RL
            known: dash_tyreWear_Percent_RL_Available
        }

        Cell {
            width: 71
            caption: "WEAR RR"
            unit: "%"
            text: dash_tyreWear_Percent_RR
            known: dash_tyreWear_Percent_RR_Available
        }
    }
}
