import QtQuick
import Tallyglass

TextLabel {
    font.pixelSize: Theme.headlineSize
    font.weight: Font.DemiBold
    Accessible.role: Accessible.Heading
}
