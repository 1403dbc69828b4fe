import Tallyglass.Context
import Tallyglass.Controls

SectionNotice {
    required property ScreenContext context

    text: qsTr("Tracing a file through every backup is on its way.")
    systemImage: "clock.arrow.circlepath"
}
