import Tallyglass

// The small, quiet text below or beside what it explains.
TextLabel {
    color: Theme.secondaryText
    font.pixelSize: Theme.captionSize
}
