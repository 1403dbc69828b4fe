import Tallyglass

SectionNotice {
    text: qsTr("Tracing a file through every backup is on its way.")
    systemImage: "clock.arrow.circlepath"
}
