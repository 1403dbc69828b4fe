import QtQuick

TextLabel {
    font.pixelSize: Theme.titleSize
    font.weight: Font.DemiBold
    Accessible.role: Accessible.Heading
}
