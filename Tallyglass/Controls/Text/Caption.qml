import Tallyglass.Controls

// Small, subdued text that explains what it is next to.
Label {
    color: Theme.secondaryText
    font.pixelSize: Theme.captionSize
}
