import QtQuick
import QtQuick.Layouts
import Tallyglass.AccessGuide
import Tallyglass.Context
import Tallyglass.Controls

// Leads through granting Full Disk Access, to this program or to the helper.
Sheet {
    id: guide
    required property ScreenContext context
    property bool forHelper: false // rather than to the program

    title: state.content.title
    preferredWidth: Theme.unit * 80

    AccessGuideViewModel {
        id: state
        context: guide.context
        forHelper: guide.forHelper
        isOpen: guide.opened
    }

    RowLayout {
        width: parent.width
        spacing: Theme.unit * 2
        Symbol {
            Layout.alignment: Qt.AlignTop
            name: state.content.symbol
            color: Theme.colors[state.content.role]
            size: Theme.displaySize * 1.5
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: Theme.unit / 2
            Title {
                Layout.fillWidth: true
                text: state.content.title
            }
            Label {
                Layout.fillWidth: true
                text: state.content.text
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
        item: state.content.item
        itemUrl: state.itemUrl
        itemSymbol: guide.forHelper ? "terminal.fill" : "clock.arrow.trianglehead.counterclockwise.rotate.90"
        description: state.content.illustration
    }
    Column {
        id: steps
        width: parent.width
        spacing: Theme.unit * 1.5
        Repeater {
            model: state.content.steps
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
                kind: Button.Prominent
                text: state.content.primaryText
                systemImage: "arrow.up.forward.app"
                onClicked: state.openSettings()
            }
            Button {
                text: state.content.secondaryText
                systemImage: state.content.secondarySymbol
                onClicked: state.help()
            }
            Row {
                height: Theme.controlHeight
                leftPadding: Theme.unit
                spacing: Theme.unit / 2
                Symbol {
                    anchors.verticalCenter: parent.verticalCenter
                    name: state.content.statusSymbol
                    color: Theme.colors[state.content.role]
                }
                Label {
                    anchors.verticalCenter: parent.verticalCenter
                    text: state.content.status
                    color: granted ? Theme.textColors[state.content.role] : Theme.secondaryText
                    wrapMode: Text.NoWrap

                    readonly property bool granted: state.content.statusSymbol !== ""
                }
            }
        }
    ]
}
