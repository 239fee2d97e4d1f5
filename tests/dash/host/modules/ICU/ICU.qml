pragma Singleton
import QtQml 2.15

QtObject {
    enum Id { OK, SoftwareConfiguration }

    function button(id) {
        return id === ICU.OK ? "OK" : ""
    }
    function title(id, prefix, suffix) {
        return id === ICU.SoftwareConfiguration ? prefix + "Configuration" + suffix : ""
    }
}
