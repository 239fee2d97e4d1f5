import QtQml 2.15

QtObject {
    function getExistingFile(window, title, filter, startPath) {
        host_double.record("getExistingFile", [window === qt_window, title, filter, startPath])
        return host_double.chosenFile
    }
}
