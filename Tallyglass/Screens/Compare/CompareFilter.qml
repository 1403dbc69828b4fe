import QtQuick
import QtQuick.Layouts
import Tallyglass.Compare
import Tallyglass.Controls

// Picks which changes are listed.
GridLayout {
    id: filter
    required property CompareViewModel viewModel
    readonly property compareResultsContent content: viewModel.results

    columns: width < Theme.unit * 100 * Theme.textScale ? 1 : 2
    columnSpacing: Theme.unit * 2
    rowSpacing: Theme.unit

    SearchField {
        id: field
        Layout.fillWidth: true
        placeholderText: qsTr("Filter paths")
        text: filter.content.searchText
        onTextEdited: filter.viewModel.setSearchText(text)
    }
    Flow {
        Layout.fillWidth: filter.columns === 1
        spacing: Theme.unit

        Switch {
            text: qsTr("Content changes only")
            checked: filter.content.contentOnly
            onToggled: filter.viewModel.setContentOnly(checked)
        }
        Repeater {
            model: filter.content.kinds.length
            FilterChip {
                required property int index
                readonly property kindToggle kind: filter.content.kinds[index]
                text: kind.label
                systemImage: kind.symbol
                symbolColor: Theme.colors[kind.role]
                checked: kind.isOn
                onToggled: filter.viewModel.toggleKind(index)
            }
        }
        Label {
            height: Theme.controlHeight
            leftPadding: Theme.unit / 2
            text: filter.content.shownCount
            color: Theme.secondaryText
            wrapMode: Text.NoWrap
            verticalAlignment: Text.AlignVCenter
        }
    }
}
