import QtQuick
import QtQuick.Layouts
import Tallyglass

// Which of the changes are listed.
GridLayout {
    id: filter
    required property CompareState view
    readonly property compareResultsContent content: view.results

    columns: width < Theme.unit * 100 * Theme.textScale ? 1 : 2
    columnSpacing: Theme.unit * 2
    rowSpacing: Theme.unit

    FilterField {
        id: field
        Layout.fillWidth: true
        placeholderText: qsTr("Filter paths")
        text: filter.content.searchText
        onTextEdited: filter.view.setSearchText(text)
    }
    Flow {
        Layout.fillWidth: filter.columns === 1
        spacing: Theme.unit

        LabelledSwitch {
            text: qsTr("Content changes only")
            checked: filter.content.contentOnly
            onToggled: filter.view.setContentOnly(checked)
        }
        Repeater {
            model: filter.content.kinds.length
            FilterToggle {
                required property int index
                readonly property kindToggle kind: filter.content.kinds[index]
                text: kind.label
                systemImage: kind.symbol
                symbolColor: Theme.colors[kind.role]
                isOn: kind.isOn
                onFlipped: filter.view.toggleKind(index)
            }
        }
        TextLabel {
            height: Theme.controlHeight
            leftPadding: Theme.unit / 2
            text: filter.content.shownCount
            color: Theme.secondaryText
            wrapMode: Text.NoWrap
            verticalAlignment: Text.AlignVCenter
        }
    }
}
