import Tallyglass.Context
import Tallyglass.Controls

SectionNotice {
    required property ScreenContext context

    text: qsTr("Managing what is left out of backups is on its way.")
    systemImage: "nosign"
}
