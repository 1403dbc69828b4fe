import QtQuick
import QtQuick.Layouts
import Tallyglass.Compare
import Tallyglass.Context
import Tallyglass.Controls

// How many of the comparisons of neighbouring backups are ready, and a run that makes the others.
Card {
    id: card
    required property ScreenContext context
    readonly property bool hasPairs: content.hasPairs
    readonly property backfillContent content: backfill.content

    signal pairOpened()

    title: qsTr("All backups")
    systemImage: "square.stack.3d.up"

    BackfillViewModel {
        id: backfill
        context: card.context
    }

    Column {
        width: parent.width
        spacing: Theme.unit / 4
        Label {
            width: parent.width
            text: card.content.summary
        }
        Caption {
            width: parent.width
            text: card.content.optionsText
        }
    }
    Column {
        width: parent.width
        spacing: Theme.unit / 2

        PairStrip {
            id: strip
            width: parent.width
            height: Theme.unit * 2 + Theme.bodySize
            viewModel: backfill
            onActivated: pair => {
                backfill.openPair(pair);
                card.pairOpened();
            }
            Accessible.role: Accessible.Slider
            Accessible.name: qsTr("Comparisons of neighbouring backups")
            Accessible.description: strip.selectedText
            Accessible.focusable: true
            Accessible.onIncreaseAction: strip.moveBy(1)
            Accessible.onDecreaseAction: strip.moveBy(-1)
            Accessible.onPressAction: strip.activateSelected()
            FocusRing { visible: strip.visualFocus }
        }
        Row {
            width: parent.width
            spacing: Theme.unit
            Caption {
                width: (parent.width - parent.spacing) / 2
                text: card.content.firstBackup
                Accessible.ignored: true
            }
            Caption {
                width: (parent.width - parent.spacing) / 2
                text: card.content.lastBackup
                horizontalAlignment: Text.AlignRight
                Accessible.ignored: true
            }
        }
        Caption {
            width: parent.width
            text: strip.caption !== "" ? strip.caption
                : qsTr("One mark for each backup and the next, filled when their comparison is ready. "
                       + "Choose one to see it.")
        }
    }
    ErrorBanner {
        width: parent.width
        visible: text !== ""
        text: card.content.error
    }
    RowLayout {
        width: parent.width
        visible: card.content.isRunning
        spacing: Theme.unit
        BusyIndicator {}
        Column {
            Layout.fillWidth: true
            spacing: Theme.unit / 2
            Label {
                width: parent.width
                text: card.content.workText
                wrapMode: Text.NoWrap
                elide: Text.ElideMiddle
            }
            ProgressBar {
                width: parent.width
                value: card.content.fraction
                Accessible.name: card.content.summary
            }
            Caption {
                width: parent.width
                visible: text !== ""
                text: card.content.timeLeft
            }
        }
        Button {
            text: qsTr("Pause")
            enabled: !card.content.isPausing
            onClicked: backfill.pause()
        }
    }
    Flow {
        width: parent.width
        visible: card.content.startText !== "" || card.content.failedText !== ""
        spacing: Theme.unit
        Button {
            visible: card.content.startText !== ""
            text: card.content.startText
            systemImage: "play.fill"
            onClicked: backfill.start()
        }
        FilterChip {
            id: failed
            visible: card.content.failedText !== ""
            text: card.content.failedText
            systemImage: "exclamationmark.triangle.fill"
        }
    }
    Reveal {
        width: parent.width
        revealed: card.content.failedText !== "" && failed.checked
        spacing: Theme.unit * 1.5
        Column {
            width: parent.width
            spacing: Theme.unit
            Repeater {
                model: card.content.failures
                Column {
                    id: failure
                    required property backfillFailure modelData
                    width: parent.width
                    Label {
                        width: parent.width
                        text: failure.modelData.title
                    }
                    Caption {
                        width: parent.width
                        text: failure.modelData.reason
                    }
                }
            }
            Caption {
                width: parent.width
                visible: text !== ""
                text: card.content.moreFailures
            }
        }
    }
    Switch {
        width: parent.width
        text: qsTr("Compare each new backup when it ends, once all others are ready")
        checked: card.content.preparesNewBackups
        onToggled: backfill.setPreparesNewBackups(checked)
    }
}
