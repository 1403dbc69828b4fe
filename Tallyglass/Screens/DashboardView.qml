import QtQuick

ScrollPage {}
