import Tallyglass

SectionNotice {
    text: qsTr("Managing what is left out of backups is on its way.")
    systemImage: "nosign"
}
