import QtQuick
import Tallyglass.Controls

Label {
    font.pixelSize: Theme.titleSize
    font.weight: Font.DemiBold
    Accessible.role: Accessible.Heading
}
