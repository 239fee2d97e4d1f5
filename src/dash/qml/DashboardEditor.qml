import QtQuick 2.15
import ClassicUIBridge 1.0
import ICU 1.0
import "qrc:/qml/Components"
import "qrc:/qml/HLVN/Controls" as HLVN
import "qrc:/qml/HLVN/Controls/Base" as HLVNBase

Window {
    id: root

    readonly property real controlSpacing: HLVNBase.Defaults.controlSpacing
    readonly property real initialWidth: 900 * qt_scale
    readonly property real initialHeight: 765 * qt_scale
    readonly property int previewWidth: 854
    readonly property int previewHeight: 480

    title: qsTr("Dashboard Editor")
    helpButtonVisible: true
    minimizeButtonVisible: false

    component SliderCaption: HLVN.Label {
        property Item slider

        height: slider.height
        verticalAlignment: Text.AlignVCenter
    }

    component SliderValue: HLVN.Label {
        property Item slider

        width: 50 * qt_scale
        height: slider.height
        verticalAlignment: Text.AlignVCenter
        horizontalAlignment: Text.AlignRight
    }

    ClassicUIBridge {
        id: classicUI
    }

    content: Rectangle {
        anchors.fill: parent
        anchors.topMargin: root.controlSpacing
        color: ux.popupInnerBackground

        HLVN.ColumnDefault {
            id: column

            anchors.left: parent.left
            anchors.top: parent.top
            anchors.right: sidePanel.left

            HLVN.Label {
                text: qsTr("Path to dashboard file:")
            }

            Row {
                width: parent.width
                spacing: column.spacing

                HLVN.TextField {
                    width: 0.65 * parent.width
                    height: browseButton.height
                    readOnly: true
                    text: cpp_viewModel.path
                }

                HLVN.RoundedButton {
                    id: browseButton

                    text: "..."
                    onClicked: {
                        const file = classicUI.getExistingFile(
                                       qt_window, qsTr("Select main dashboard QML file"),
                                       qsTr("Main QML file (*.qml)"), cpp_viewModel.path)
                        if (file !== "")
                            cpp_viewModel.path = file
                    }
                }

                HLVN.RoundedButton {
                    text: qsTr("Code")
                    enabled: cpp_viewModel.path !== ""
                    onClicked: cpp_viewModel.openCode()
                }
            }

            HLVN.LabelMultiLine {
                width: parent.width
                text: qsTr("Below preview is automatically refreshed if the dashboard file is changed in external editor.")
            }

            Rectangle {
                id: previewFrame

                readonly property int reservedHeight: 535 // Height of the other rows, at scale 1.
                readonly property int availableWidth: column.width / qt_scale
                readonly property int availableHeight: Math.max(0, root.height / qt_scale - reservedHeight)
                readonly property real customScale:
                    availableWidth * root.previewHeight / root.previewWidth < availableHeight
                    ? availableWidth / root.previewWidth : availableHeight / root.previewHeight

                width: qt_scale * root.previewWidth * customScale
                height: qt_scale * root.previewHeight * customScale
                anchors.horizontalCenter: parent.horizontalCenter
                color: ux.itemBackgroundColor3

                // Loads synchronously, because its provider renders on this thread.
                Image {
                    id: preview

                    // Toggled for each new frame: the image requests again only if its address changes.
                    property bool toggle: false

                    anchors.centerIn: parent
                    source: "image://dashEditor/preview?id=" + toggle
                    sourceSize.width: previewFrame.width
                    visible: previewFrame.width > 0 // Without a width it would have its own size.
                    fillMode: Image.PreserveAspectFit
                    smooth: true
                    cache: false
                }
            }

            Grid {
                id: sliders

                readonly property real captionWidths:
                    Math.max(rotationCaption.width, brakeCaption.width, rpmCaption.width)
                    + Math.max(gasCaption.width, clutchCaption.width, maxRpmCaption.width)
                readonly property real sliderWidth:
                    (width - captionWidths - 2 * rotationValue.width - (columns - 1) * spacing) / 2

                width: parent.width
                spacing: column.spacing
                columns: 6

                SliderCaption {
                    id: rotationCaption

                    slider: rotation
                    text: qsTr("Steering rotation:")
                }

                HLVN.Slider {
                    id: rotation

                    width: sliders.sliderWidth
                    minimumValue: -100
                    maximumValue: 100
                    stepSize: 1
                    value: 0
                    onValueChanged: cpp_viewModel.setRotation(value)
                }

                SliderValue {
                    id: rotationValue

                    slider: rotation
                    text: rotation.value + " [%]"
                }

                SliderCaption {
                    id: gasCaption

                    slider: gas
                    text: qsTr("Gas pedal:")
                }

                HLVN.Slider {
                    id: gas

                    width: sliders.sliderWidth
                    minimumValue: 0
                    maximumValue: 100
                    stepSize: 1
                    value: 0
                    onValueChanged: cpp_viewModel.setGasPedal(value)
                }

                SliderValue {
                    slider: gas
                    text: gas.value + " [%]"
                }

                SliderCaption {
                    id: brakeCaption

                    slider: brake
                    text: qsTr("Brake pedal:")
                }

                HLVN.Slider {
                    id: brake

                    width: sliders.sliderWidth
                    minimumValue: 0
                    maximumValue: 100
                    stepSize: 1
                    value: 0
                    onValueChanged: cpp_viewModel.setBrakePedal(value)
                }

                SliderValue {
                    slider: brake
                    text: brake.value + " [%]"
                }

                SliderCaption {
                    id: clutchCaption

                    slider: clutch
                    text: qsTr("Clutch pedal:")
                }

                HLVN.Slider {
                    id: clutch

                    width: sliders.sliderWidth
                    minimumValue: 0
                    maximumValue: 100
                    stepSize: 1
                    value: 0
                    onValueChanged: cpp_viewModel.setClutchPedal(value)
                }

                SliderValue {
                    slider: clutch
                    text: clutch.value + " [%]"
                }

                SliderCaption {
                    id: rpmCaption

                    slider: rpm
                    text: qsTr("RPM:")
                }

                HLVN.Slider {
                    id: rpm

                    width: sliders.sliderWidth
                    minimumValue: 0
                    maximumValue: maxRpm.value
                    stepSize: 1
                    value: 700
                    onValueChanged: cpp_viewModel.setRpm(value, maxRpm.value)
                }

                SliderValue {
                    slider: rpm
                    text: rpm.value
                }

                SliderCaption {
                    id: maxRpmCaption

                    slider: maxRpm
                    text: qsTr("Max RPM:")
                }

                HLVN.Slider {
                    id: maxRpm

                    width: sliders.sliderWidth
                    minimumValue: 4000
                    maximumValue: 13000
                    stepSize: 1
                    value: 13000
                    onValueChanged: cpp_viewModel.setRpm(rpm.value, value)
                }

                SliderValue {
                    slider: maxRpm
                    text: maxRpm.value
                }
            }

            Grid {
                width: parent.width
                columns: 3
                columnSpacing: 2 * column.spacing
                rowSpacing: column.spacing

                HLVN.CheckBox {
                    text: qsTr("Show debug markers")
                    onCheckedChanged: cpp_viewModel.setShowMarkets(checked)
                }

                HLVN.CheckBox {
                    text: qsTr("Show system panel")
                    onCheckedChanged: cpp_viewModel.setSystemPanel(checked)
                }

                HLVN.CheckBox {
                    text: qsTr("Pause")
                    onCheckedChanged: cpp_viewModel.setPaused(checked)
                }

                HLVN.CheckBox {
                    text: qsTr("Use mph instead of km/h")
                    onCheckedChanged: cpp_viewModel.setUseMph(checked)
                }

                HLVN.CheckBox {
                    text: qsTr("Session flag - yellow")
                    onCheckedChanged: cpp_viewModel.setYellowFlag(checked)
                }

                HLVN.CheckBox {
                    text: qsTr("Session flag - blue")
                    onCheckedChanged: cpp_viewModel.setBlueFlag(checked)
                }

                HLVN.CheckBox {
                    text: qsTr("Session flag - black")
                    onCheckedChanged: cpp_viewModel.setBlackFlag(checked)
                }

                HLVN.CheckBox {
                    text: qsTr("Session flag - black/white")
                    onCheckedChanged: cpp_viewModel.setBlackAndWhiteFlag(checked)
                }

                HLVN.CheckBox {
                    text: qsTr("DRS Available")
                    onCheckedChanged: cpp_viewModel.setDrsAvailable(checked)
                }
            }

            HLVN.LabelLinkEmbedded {
                width: parent.width
                wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                richText: qsTr("<strong>NOTE:</strong> Above controls are only for preview purpose. If you wish to use mph (miles) instead of km/h during gameplay, change units in %1.")
                          .arg(ICU.title(ICU.SoftwareConfiguration, "<a href='#'>", "</a>"))
                onLinkActivated: qt_navigation.showView("SoftwareConfiguration")
            }
        }

        Rectangle {
            id: sidePanel

            width: 260 * qt_scale
            anchors.top: parent.top
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            anchors.margins: HLVNBase.Defaults.controlPanelMargin
            color: HLVNBase.Defaults.controlBackgroundColor
            border.width: HLVNBase.Defaults.controlBorderWidth
            border.color: ux.itemBorderColor

            HLVN.FlickableV {
                anchors.fill: parent
                contentHeight: fields.paintedHeight + 2 * root.controlSpacing

                TextEdit {
                    id: fields

                    anchors.top: parent.top
                    anchors.left: parent.left
                    anchors.right: parent.right
                    anchors.topMargin: root.controlSpacing
                    anchors.leftMargin: root.controlSpacing
                    anchors.rightMargin: 2 * root.controlSpacing
                    clip: true
                    color: ux.textDarkColor
                    font.family: ux.primaryFontFamily
                    font.pixelSize: ux.h4FontSize
                    textFormat: TextEdit.PlainText
                    wrapMode: TextEdit.NoWrap
                    selectByMouse: true
                    readOnly: true
                    text: cpp_viewModel.dashboardFields
                }
            }
        }
    }

    bottomPanel: ButtonsBarWithErrorText {
        buttons: HLVN.RoundedButton {
            text: ICU.button(ICU.OK)
            onClicked: cpp_viewModel.ok()
        }
    }

    Connections {
        target: cpp_viewModel
        function onPreviewChanged() { preview.toggle = !preview.toggle }
    }

    onHelpClicked: qt_navigation.showView("HelpBrowser", "dashboards")
    onCloseClicked: cpp_viewModel.ok()

    Component.onCompleted: {
        qt_window.minimumWidth = initialWidth
        qt_window.minimumHeight = initialHeight
        qt_window.setInitialSize(initialWidth, initialHeight)
    }
}
