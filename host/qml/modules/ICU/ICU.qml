pragma Singleton
import QtQml 2.15

// Texts that many windows share.
QtObject {
    enum Id { OK, SoftwareConfiguration }

    function button(id) {
        return id === ICU.OK ? qsTr("OK") : ""
    }

    // The title of a window, within two texts, such as the two ends of a link.
    function title(id, prefix, suffix) {
        return id === ICU.SoftwareConfiguration ? prefix + qsTr("Settings") + suffix : ""
    }
}
