import QtQuick
import Tallyglass.AccessGuide
import Tallyglass.BackupChanges
import Tallyglass.Compare
import Tallyglass.Context
import Tallyglass.Controls
import Tallyglass.Dashboard
import Tallyglass.Diagnostics
import Tallyglass.Exclusions
import Tallyglass.FileHistory
import Tallyglass.Shell
import Tallyglass.Timeline

// The content of the window: the sidebar, and beside it the screen of the current section. A screen is created when its
// section is first shown, and kept.
FocusScope {
    id: root
    required property ScreenContext context
    property real sidebarWidth: 190
    property int sectionIndex: 0

    /// The current screen.
    property Item screen: null

    /// In the order of the sidebar.
    readonly property list<Section> sections: [
        Section {
            name: "overview"
            title: qsTr("Overview")
            systemImage: "gauge.with.dots.needle.33percent"
            screen: DashboardView {
                context: root.context
                timeline: TimelineView { context: root.context }
                support: SupportCard { context: root.context }
                diagnostics: DiagnosticsCard { context: root.context }
            }
        },
        Section {
            name: "compare"
            title: qsTr("Compare")
            systemImage: "arrow.left.arrow.right"
            screen: CompareView { context: root.context }
        },
        Section {
            name: "history"
            title: qsTr("File History")
            systemImage: "clock.arrow.circlepath"
            screen: FileHistoryView { context: root.context }
        },
        Section {
            name: "exclusions"
            title: qsTr("Exclusions")
            systemImage: "nosign"
            screen: ExclusionsView { context: root.context }
        }
    ]

    /// Goes to the section of this name; its screen.
    function show(section: string): Item {
        for (let index = 0; index < sections.length; ++index)
            if (sections[index].name === section)
                sectionIndex = index;
        const sheet = changesSheet.item as SheetFrame;
        sheet?.close();
        return screen;
    }
    /// Opens a sheet over the whole window.
    function present(sheet: int, subject: var): var {
        const loader = sheet === ScreenContext.About ? aboutSheet
                     : sheet === ScreenContext.BackupChanges ? changesSheet : accessGuide;
        loader.sheet = sheet;
        loader.subject = subject;
        loader.active = true;
        const content = loader.item as SheetFrame;
        content.open();
        return content;
    }

    component SheetLoader: Loader { // keeps the sheet until it is closed
        id: loader
        property int sheet
        property var subject

        active: false
        Connections {
            target: loader.item
            function onClosed() { loader.active = false; }
        }
    }

    SheetLoader {
        id: aboutSheet
        sourceComponent: AboutSheet {}
    }
    SheetLoader {
        id: accessGuide
        sourceComponent: FullDiskAccessGuide {
            context: root.context
            forHelper: accessGuide.sheet === ScreenContext.HelperAccessGuide
        }
    }
    SheetLoader {
        id: changesSheet
        sourceComponent: BackupChangesView {
            context: root.context
            target: changesSheet.subject
        }
    }
    Connections {
        target: root.context
        function onSheetRequested(sheet, subject) { root.present(sheet, subject); }
        function onTraceRequested(path) { (root.show("history") as FileHistoryView).viewModel.trace(path); }
        function onComparisonRequested(older, newer) {
            (root.show("compare") as CompareView).viewModel.compareBackups(older, newer);
        }
    }

    ShellViewModel {
        id: shellViewModel
        context: root.context
    }

    Rectangle {
        id: side
        // Grows with the text, but leaves most of a small window to the screen.
        width: Math.min(root.sidebarWidth * Math.max(1, Theme.textScale), root.width * 0.36)
        height: parent.height
        color: Theme.sidebarBackground

        Sidebar {
            id: sidebar
            anchors.fill: parent
            viewModel: shellViewModel
            sections: root.sections
            sectionIndex: root.sectionIndex
            onActivated: index => root.sectionIndex = index
        }
    }
    Rectangle {
        anchors.left: side.right
        width: 1
        height: parent.height
        z: 1
        color: Theme.line

        SplitHandle {
            anchors.fill: parent
            value: root.sidebarWidth
            onMoved: value => root.sidebarWidth = value
        }
    }
    Item {
        x: side.width + 1
        width: parent.width - x
        height: parent.height

        TopBar {
            id: topBar
            width: parent.width
            z: 1
            title: "Tallyglass"
            subtitle: shellViewModel.content.subtitle

            TopBarActions { context: root.context }
        }
        Item {
            y: topBar.height
            width: parent.width
            height: parent.height - y

            Repeater {
                model: root.sections
                Loader {
                    required property int index
                    required property Section modelData
                    readonly property bool current: index === root.sectionIndex

                    anchors.fill: parent
                    active: false
                    visible: current
                    sourceComponent: modelData.screen
                    onCurrentChanged: enter()
                    Component.onCompleted: enter()

                    function enter() {
                        if (!current)
                            return;
                        active = true;
                        root.screen = item;
                        if (!sidebar.hasFocus)
                            forceActiveFocus(Qt.OtherFocusReason);
                    }
                }
            }
        }
    }
    ShellShortcuts {
        context: root.context
        sectionCount: root.sections.length
        onSectionRequested: index => root.sectionIndex = index
    }
    AlertHost { alerts: root.context.alerts }
    FilePanelHost { panels: root.context.panels }
}
