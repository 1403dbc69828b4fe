import QtQuick
import Tallyglass.Context
import Tallyglass.Controls
import Tallyglass.FileHistory

// Traces a path through all backups and lists its distinct versions.
ScrollPage {
    id: page
    required property ScreenContext context
    readonly property alias viewModel: historyViewModel

    FileHistoryViewModel {
        id: historyViewModel
        context: page.context
    }
    Title {
        width: parent.width
        text: qsTr("File History")
    }
    LockedNotice {
        width: parent.width
        visible: historyViewModel.isLocked
        heading: qsTr("File history needs Full Disk Access")
        text: qsTr("Reading a file's versions means looking inside each backup.")
        onGuideRequested: page.context.openSheet(ScreenContext.AppAccessGuide)
    }
    FileHistorySearch {
        width: parent.width
        viewModel: historyViewModel
    }
    Reveal {
        width: parent.width
        revealed: historyViewModel.content.error !== ""
        spacing: page.spacing
        ErrorBanner { width: parent.width; text: historyViewModel.content.error }
    }
    Card {
        width: parent.width
        visible: historyViewModel.content.notFoundText !== ""
        EmptyState {
            width: parent.width
            systemImage: "questionmark.folder"
            title: qsTr("Not found in any backup")
            description: historyViewModel.content.notFoundText
        }
    }
    FileHistoryResults {
        width: parent.width
        visible: historyViewModel.content.tiles.length > 0
        viewModel: historyViewModel
        page: page
    }
    FileDropArea {
        parent: page // the visible part
        anchors.fill: parent
        enabled: !historyViewModel.isLocked
        text: qsTr("Drop to trace the item")
        onFilesDropped: urls => historyViewModel.traceItem(urls)
    }
}
