import QtQuick 2.15

QtObject {
    id: root

    property string log
    property string chosenFile
    property point cursor

    function record(name, args) {
        log += name + "(" + args.join(", ") + ")\n"
    }

    property QtObject viewModel: QtObject {
        property string path
        property string dashboardFields: "dash_a\ndash_b"

        signal previewChanged

        function ok() { root.record("ok", []) }
        function openCode() { root.record("openCode", []) }
        function setRotation(value) { root.record("setRotation", [value]) }
        function setGasPedal(value) { root.record("setGasPedal", [value]) }
        function setBrakePedal(value) { root.record("setBrakePedal", [value]) }
        function setClutchPedal(value) { root.record("setClutchPedal", [value]) }
        function setRpm(value, limit) { root.record("setRpm", [value, limit]) }
        function setShowMarkets(on) { root.record("setShowMarkets", [on]) }
        function setSystemPanel(on) { root.record("setSystemPanel", [on]) }
        function setPaused(on) { root.record("setPaused", [on]) }
        function setUseMph(on) { root.record("setUseMph", [on]) }
        function setYellowFlag(on) { root.record("setYellowFlag", [on]) }
        function setBlueFlag(on) { root.record("setBlueFlag", [on]) }
        function setBlackFlag(on) { root.record("setBlackFlag", [on]) }
        function setBlackAndWhiteFlag(on) { root.record("setBlackAndWhiteFlag", [on]) }
        function setDrsAvailable(on) { root.record("setDrsAvailable", [on]) }
    }

    property QtObject window: QtObject {
        property int minimumWidth
        property int minimumHeight
        property int x: 100
        property int y: 200
        property bool isStayOnTop: false

        function setInitialSize(width, height) { root.record("setInitialSize", [width, height]) }
        function setTitle(text) { root.record("setTitle", [text]) }
        function move(newX, newY) {
            x = newX
            y = newY
            root.record("move", [newX, newY])
        }
        function cursorPosGlobal() { return root.cursor }
        function setAboutToBeMoved(flag) { root.record("setAboutToBeMoved", [flag]) }
        function showFullScreen() { root.record("showFullScreen", []) }
        function showNormal() { root.record("showNormal", []) }
        function toggleStayOnTop() { isStayOnTop = !isStayOnTop }
    }

    property QtObject navigation: QtObject {
        function showView(target, argument) {
            root.record("showView", argument === undefined ? [target] : [target, argument])
        }
    }

    property QtObject ux: QtObject {
        property color textLightColor: "#ffffff"
        property color textDarkColor: "#101010"
        property color popupInnerBackground: "#e0e0e0"
        property color itemBackgroundColor3: "#c0c0c0"
        property color itemBorderColor: "#808080"
        property int h4FontSize: 13
        property string primaryFontFamily: "Sans"
    }
}
