import Tallyglass.Controls

// The small, quiet text below or beside what it explains.
Label {
    color: Theme.secondaryText
    font.pixelSize: Theme.captionSize
}
