import Tallyglass

SectionNotice {
    required property AppModel model
    required property HelperSetup helperSetup
    required property Workspace workspace
    required property Pasteboard pasteboard

    text: qsTr("Managing what is left out of backups is on its way.")
    systemImage: "nosign"
}
