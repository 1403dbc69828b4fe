import Tallyglass

SectionNotice {
    text: qsTr("Comparing two backups is on its way.")
    systemImage: "arrow.left.arrow.right"
}
