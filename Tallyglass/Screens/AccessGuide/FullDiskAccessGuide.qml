import QtQuick
import QtQuick.Layouts
import Tallyglass.AccessGuide
import Tallyglass.Context
import Tallyglass.Controls

// Guides through granting Full Disk Access to this program or to the helper.
Sheet {
    id: guide
    required property ScreenContext context
    property bool forHelper: false // instead of the program

    title: guideViewModel.content.title
    preferredWidth: Theme.unit * 80

    AccessGuideViewModel {
        id: guideViewModel
        context: guide.context
        forHelper: guide.forHelper
        isOpen: guide.opened
    }

    RowLayout {
        width: parent.width
        spacing: Theme.unit * 2
        Symbol {
            Layout.alignment: Qt.AlignTop
            name: guideViewModel.content.symbol
            color: Theme.colors[guideViewModel.content.role]
            size: Theme.displaySize * 1.5
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: Theme.unit / 2
            Title {
                Layout.fillWidth: true
                text: guideViewModel.content.title
            }
            Label {
                Layout.fillWidth: true
                text: guideViewModel.content.text
                color: Theme.secondaryText
            }
        }
        Button {
            Layout.alignment: Qt.AlignTop
            text: qsTr("Done")
            focus: true
            onClicked: guide.close()
        }
    }
    FDADragIllustration {
        width: parent.width
        itemName: guideViewModel.content.item
        itemUrl: guideViewModel.itemUrl
        itemSymbol: guide.forHelper ? "terminal.fill" : "clock.arrow.trianglehead.counterclockwise.rotate.90"
        description: guideViewModel.content.illustration
    }
    Column {
        id: steps
        width: parent.width
        spacing: Theme.unit * 1.5
        Repeater {
            model: guideViewModel.content.steps
            RowLayout {
                id: step
                required property accessStep modelData
                required property int index
                width: steps.width
                spacing: Theme.unit * 1.5
                Rectangle {
                    Layout.alignment: Qt.AlignTop
                    implicitWidth: Theme.bodySize * 1.8
                    implicitHeight: implicitWidth
                    radius: width / 2
                    color: Theme.selectedBackground
                    Label {
                        anchors.centerIn: parent
                        text: step.index + 1
                        color: Theme.accent
                        font.weight: Font.DemiBold
                    }
                }
                Symbol {
                    Layout.alignment: Qt.AlignTop
                    Layout.topMargin: Theme.bodySize * 0.2
                    name: step.modelData.glyph
                    color: Theme.accent
                }
                ColumnLayout {
                    Layout.fillWidth: true
                    Layout.topMargin: Theme.bodySize * 0.2
                    spacing: Theme.unit / 4
                    Label {
                        Layout.fillWidth: true
                        text: step.modelData.title
                        font.weight: Font.DemiBold
                    }
                    Label {
                        Layout.fillWidth: true
                        visible: text !== ""
                        text: step.modelData.detail
                        color: Theme.secondaryText
                    }
                }
            }
        }
    }

    buttons: [
        Flow {
            Layout.fillWidth: true
            spacing: Theme.unit
            Button {
                highlighted: true
                text: guideViewModel.content.primaryText
                systemImage: "arrow.up.forward.app"
                onClicked: guideViewModel.openSettings()
            }
            Button {
                text: guideViewModel.content.secondaryText
                systemImage: guideViewModel.content.secondarySymbol
                onClicked: guideViewModel.help()
            }
            Row {
                height: Theme.controlHeight
                leftPadding: Theme.unit
                spacing: Theme.unit / 2
                Symbol {
                    anchors.verticalCenter: parent.verticalCenter
                    name: guideViewModel.content.statusSymbol
                    color: Theme.colors[guideViewModel.content.role]
                }
                Label {
                    anchors.verticalCenter: parent.verticalCenter
                    text: guideViewModel.content.status
                    color: granted ? Theme.textColors[guideViewModel.content.role] : Theme.secondaryText
                    wrapMode: Text.NoWrap

                    readonly property bool granted: guideViewModel.content.statusSymbol !== ""
                }
            }
        }
    ]
}
