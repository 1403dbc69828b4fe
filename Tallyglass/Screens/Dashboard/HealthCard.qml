import QtQuick
import QtQuick.Layouts
import Tallyglass.Controls
import Tallyglass.Dashboard

// The health of the backups, and the reasons for it.
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
            Label {
                Layout.fillWidth: true
                text: health.content.cadence
                color: Theme.secondaryText
            }
        }
    }
    Loader {
        width: parent.width
        active: health.content.resultHeading !== ""
        visible: active
        sourceComponent: HealthSection {
            heading: health.content.resultHeading
            systemImage: health.content.resultSymbol
            symbolColor: Theme.colors[health.content.resultRole]
            caption: health.content.resultCaption
        }
    }
    Loader {
        width: parent.width
        active: health.content.failures.length > 0
        visible: active
        sourceComponent: HealthSection {
            heading: qsTr("Suspected failed backups")
            systemImage: "xmark.circle.fill"
            symbolColor: Theme.critical
            caption: qsTr("Time Machine attempted a backup at these times but no backup followed. macOS records the "
                          + "attempt but does not surface the failure.")
            rows: health.content.failures
        }
    }
    Loader {
        width: parent.width
        active: health.content.gaps.length > 0
        visible: active
        sourceComponent: HealthSection {
            heading: qsTr("Longer than usual")
            systemImage: "clock.badge.exclamationmark"
            symbolColor: Theme.warning
            rows: health.content.gaps
            more: health.content.moreGaps
        }
    }
}
