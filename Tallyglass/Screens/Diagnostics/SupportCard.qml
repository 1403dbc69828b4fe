import QtQuick
import Tallyglass.Context
import Tallyglass.Controls
import Tallyglass.Diagnostics

// Offers a voluntary donation. Nothing depends on it.
Card {
    id: card
    required property ScreenContext context
    property alias link: support.link

    title: qsTr("Support the project")
    systemImage: "heart.fill"

    SupportViewModel {
        id: support
        workspace: card.context.workspace
    }
    Label {
        width: parent.width
        text: qsTr("Tallyglass is free and independent. If it has spared you a backup scare, you can chip in toward "
                   + "its upkeep — nothing is locked behind it.")
        color: Theme.secondaryText
    }
    Flow {
        width: parent.width
        Button {
            text: qsTr("Support development")
            hint: support.hint
            onClicked: support.open()
        }
    }
    Caption {
        width: parent.width
        text: qsTr("Apple Pay & cards · secure checkout by Stripe")
    }
}
