import Tallyglass

TextLabel {}
