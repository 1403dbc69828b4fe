import Tallyglass.Controls

Label {}
