import QtQuick
import Tallyglass

TextLabel {
    font.pixelSize: Theme.titleSize
    font.weight: Font.DemiBold
    Accessible.role: Accessible.Heading
}
