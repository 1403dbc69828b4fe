import QtQuick
import Tallyglass.Controls

Label {
    font.pixelSize: Theme.headlineSize
    font.weight: Font.DemiBold
    Accessible.role: Accessible.Heading
}
