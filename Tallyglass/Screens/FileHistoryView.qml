import Tallyglass

SectionNotice {
    required property AppModel model
    required property HelperSetup helperSetup
    required property Workspace workspace
    required property Pasteboard pasteboard

    text: qsTr("Tracing a file through every backup is on its way.")
    systemImage: "clock.arrow.circlepath"
}
