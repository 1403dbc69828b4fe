import QtQuick
import Tallyglass

ScrollPage {}
