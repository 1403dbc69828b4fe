import QtQuick
import QtQuick.Layouts
import Tallyglass

// The card in which two backups and the way of comparing them are picked, and the comparison is started, watched
// and stopped.
Card {
    id: card
    required property CompareState view
    readonly property comparePickerContent content: view.picker

    // Two pickers and the arrow side by side, if there is room for the words in them.
    readonly property bool stacked: width - padding * 2 < 2 * from.implicitWidth + Theme.unit * 3 + arrow.width

    title: qsTr("Compare two backups")
    systemImage: "arrow.left.arrow.right"

    TextLabel {
        visible: text !== ""
        text: card.content.unavailableReason
        color: Theme.secondaryText
    }
    RowLayout {
        visible: card.content.isLooking
        spacing: Theme.unit
        Spinner {}
        TextLabel {
            Layout.fillWidth: true
            text: qsTr("Looking for backups…")
            color: Theme.secondaryText
        }
    }
    GridLayout {
        columns: card.stacked ? 1 : 3
        columnSpacing: Theme.unit * 1.5
        rowSpacing: Theme.unit / 2
        enabled: !card.content.isRunning

        ColumnLayout {
            Layout.fillWidth: true
            spacing: Theme.unit / 2
            Caption {
                text: from.label
                Accessible.ignored: true
            }
            AppComboBox {
                id: from
                Layout.fillWidth: true
                label: qsTr("From")
                model: card.view.backups
                textRole: "text"
                pickedIndex: card.content.fromIndex
                onActivated: index => card.view.pickFrom(index)
            }
        }
        Symbol {
            id: arrow
            Layout.alignment: card.stacked ? Qt.AlignLeft : Qt.AlignBottom
            Layout.bottomMargin: card.stacked ? 0 : (from.height - height) / 2
            Layout.leftMargin: card.stacked ? Theme.unit : 0
            rotation: card.stacked ? 90 : 0
            name: "arrow.right"
            color: Theme.secondaryText
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: Theme.unit / 2
            Caption {
                text: to.label
                Accessible.ignored: true
            }
            AppComboBox {
                id: to
                Layout.fillWidth: true
                label: qsTr("To")
                model: card.view.backups
                textRole: "text"
                pickedIndex: card.content.toIndex
                onActivated: index => card.view.pickTo(index)
            }
        }
    }
    Stack {
        enabled: !card.content.isRunning
        AppCheckBox {
            id: attributes
            text: qsTr("Also compare extended attributes and ownership")
            isOn: card.content.compareExtendedAttributes
            onSwitched: isOn => card.view.setCompareExtendedAttributes(isOn)
        }
        Caption {
            leftPadding: attributes.leftPadding
            text: qsTr("Off by default. tmutil normally compares extended attributes, which costs an extra "
                       + "round-trip per file and reports churn nobody acts on.")
        }
    }
    Stack {
        enabled: !card.content.isRunning
        spacing: Theme.unit / 2
        Flow {
            spacing: Theme.unit * 2
            AppStepper {
                text: card.content.depthText
                value: card.content.depth
                from: 1
                to: 12
                enabled: !card.content.unlimitedDepth
                onStepped: value => card.view.setDepth(value)
            }
            LabelledSwitch {
                text: qsTr("No limit")
                checked: card.content.unlimitedDepth
                onToggled: card.view.setUnlimitedDepth(checked)
            }
        }
        Caption { text: qsTr("Each level is a network round-trip — deeper is slower.") }
    }
    Divider {}
    Item {
        implicitHeight: Math.max(start.height, progress.implicitHeight)

        Flow {
            id: start
            width: parent.width
            visible: !card.content.isRunning
            spacing: Theme.unit
            AppButton {
                kind: AppButton.Prominent
                text: qsTr("Compare")
                systemImage: "play.fill"
                enabled: card.content.canRun
                onClicked: card.view.compare()
            }
            AppButton {
                visible: card.content.canRerun
                text: qsTr("Re-run")
                onClicked: card.view.rerun()
            }
        }
        RowLayout {
            id: progress
            width: parent.width
            visible: card.content.isRunning
            spacing: Theme.unit
            Spinner {}
            TextLabel {
                Layout.fillWidth: true
                text: card.content.progressText
                wrapMode: Text.NoWrap
                elide: Text.ElideMiddle
            }
            Caption {
                text: card.view.elapsed
                wrapMode: Text.NoWrap
                Accessible.name: qsTr("Running for %1").arg(text)
            }
            AppButton {
                text: qsTr("Cancel")
                onClicked: card.view.cancel()
            }
        }
    }
}
