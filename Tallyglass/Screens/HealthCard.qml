import QtQuick
import QtQuick.Layouts
import Tallyglass

// The verdict on the backups, and below it the reasons.
Card {
    id: health
    required property healthCardContent content

    Accessible.name: content.summary

    RowLayout {
        width: parent.width
        spacing: Theme.unit * 1.5
        Symbol {
            name: health.content.symbol
            color: Theme.colors[health.content.role]
            size: Theme.displaySize * 1.3
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: Theme.unit / 4
            Headline {
                Layout.fillWidth: true
                text: health.content.summary
            }
            TextLabel {
                Layout.fillWidth: true
                text: health.content.cadence
                color: Theme.secondaryText
            }
        }
    }
    Lazy {
        width: parent.width
        shown: health.content.resultHeading !== ""
        sourceComponent: HealthSection {
            heading: health.content.resultHeading
            systemImage: health.content.resultSymbol
            symbolColor: Theme.colors[health.content.resultRole]
            caption: health.content.resultCaption
        }
    }
    Lazy {
        width: parent.width
        shown: health.content.failures.length > 0
        sourceComponent: HealthSection {
            heading: qsTr("Suspected failed backups")
            systemImage: "xmark.circle.fill"
            symbolColor: Theme.critical
            caption: qsTr("Time Machine attempted a backup at these times but no backup followed. macOS records the "
                          + "attempt but does not surface the failure.")
            rows: health.content.failures
        }
    }
    Lazy {
        width: parent.width
        shown: health.content.gaps.length > 0
        sourceComponent: HealthSection {
            heading: qsTr("Longer than usual")
            systemImage: "clock.badge.exclamationmark"
            symbolColor: Theme.warning
            rows: health.content.gaps
            more: health.content.moreGaps
        }
    }
}
