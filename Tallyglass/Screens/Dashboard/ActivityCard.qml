import QtQuick
import QtQuick.Layouts
import Tallyglass.Controls
import Tallyglass.Dashboard

// The progress of a running backup.
Card {
    id: activity
    required property activityCardContent content

    Accessible.name: content.title

    RowLayout {
        width: parent.width
        spacing: Theme.unit
        Symbol {
            name: "clock.arrow.circlepath"
            color: Theme.accent
        }
        Headline {
            Layout.fillWidth: true
            text: activity.content.title
        }
        Headline {
            visible: text !== ""
            text: activity.content.percent
            Accessible.role: Accessible.StaticText
        }
    }
    ProgressBar {
        width: parent.width
        opacity: activity.content.hasFraction ? 1 : 0 // keeps its space
        value: activity.content.fraction
        label: activity.content.title
        Accessible.ignored: !activity.content.hasFraction
    }
    Label {
        width: parent.width
        text: activity.content.detail
        color: Theme.secondaryText
    }
}
