import QtQuick
import QtQuick.Layouts
import Tallyglass.Compare
import Tallyglass.Controls

// Picks two backups and how they are compared, and starts, follows and stops the comparison.
Card {
    id: card
    required property CompareViewModel viewModel
    readonly property comparePickerContent content: viewModel.picker

    // Two pickers and the arrow side by side, if their texts fit.
    readonly property bool stacked: width - padding * 2 < 2 * from.implicitWidth + Theme.unit * 3 + arrow.width

    title: qsTr("Compare two backups")
    systemImage: "arrow.left.arrow.right"

    Label {
        width: parent.width
        visible: text !== ""
        text: card.content.unavailableReason
        color: Theme.secondaryText
    }
    RowLayout {
        width: parent.width
        visible: card.content.isLooking
        spacing: Theme.unit
        BusyIndicator {}
        Label {
            Layout.fillWidth: true
            text: qsTr("Looking for backups…")
            color: Theme.secondaryText
        }
    }
    Grid {
        id: pickers
        readonly property real pickerWidth: card.stacked ? width : (width - arrow.width) / 2 - columnSpacing

        width: parent.width
        columns: card.stacked ? 1 : 3
        columnSpacing: Theme.unit * 1.5
        rowSpacing: Theme.unit / 2
        verticalItemAlignment: Grid.AlignBottom
        enabled: !card.content.isRunning

        Column {
            width: pickers.pickerWidth
            spacing: Theme.unit / 2
            Caption {
                text: from.label
                Accessible.ignored: true
            }
            ComboBox {
                id: from
                width: parent.width
                label: qsTr("From")
                model: card.viewModel.backups
                textRole: "text"
                currentIndex: card.content.fromIndex
                onActivated: index => card.viewModel.pickFrom(index)
            }
        }
        Item {
            width: arrow.x + arrow.width
            height: card.stacked ? arrow.height : from.height
            Symbol {
                id: arrow
                x: card.stacked ? Theme.unit : 0
                anchors.verticalCenter: parent.verticalCenter
                rotation: card.stacked ? 90 : 0
                name: "arrow.right"
                color: Theme.secondaryText
            }
        }
        Column {
            width: pickers.pickerWidth
            spacing: Theme.unit / 2
            Caption {
                text: to.label
                Accessible.ignored: true
            }
            ComboBox {
                id: to
                width: parent.width
                label: qsTr("To")
                model: card.viewModel.backups
                textRole: "text"
                currentIndex: card.content.toIndex
                onActivated: index => card.viewModel.pickTo(index)
            }
        }
    }
    Column {
        width: parent.width
        enabled: !card.content.isRunning
        CheckBox {
            id: attributes
            width: parent.width
            text: qsTr("Also compare extended attributes and ownership")
            checked: card.content.compareExtendedAttributes
            onToggled: card.viewModel.setCompareExtendedAttributes(checked)
        }
        Caption {
            width: parent.width
            leftPadding: attributes.leftPadding
            text: qsTr("Off by default. tmutil normally compares extended attributes, which costs an extra "
                       + "round-trip per file and reports churn nobody acts on.")
        }
    }
    Column {
        width: parent.width
        enabled: !card.content.isRunning
        spacing: Theme.unit / 2
        Flow {
            width: parent.width
            spacing: Theme.unit * 2
            SpinBox {
                label: card.content.depthText
                value: card.content.depth
                from: 1
                to: 12
                enabled: !card.content.unlimitedDepth
                onValueModified: card.viewModel.setDepth(value)
            }
            Switch {
                text: qsTr("No limit")
                checked: card.content.unlimitedDepth
                onToggled: card.viewModel.setUnlimitedDepth(checked)
            }
        }
        Caption {
            width: parent.width
            text: qsTr("Each level is a network round-trip — deeper is slower.")
        }
    }
    Divider { width: parent.width }
    JobControls {
        width: parent.width
        running: card.content.isRunning
        progress: card.content.progressText
        elapsed: card.viewModel.elapsed
        onCancelRequested: card.viewModel.cancel()

        Button {
            highlighted: true
            text: qsTr("Compare")
            systemImage: "play.fill"
            enabled: card.content.canRun
            onClicked: card.viewModel.compare()
        }
        Button {
            visible: card.content.canRerun
            text: qsTr("Re-run")
            onClicked: card.viewModel.rerun()
        }
    }
}
