import QtQuick
import Kestrovan.Parts

// Around whatever has the keyboard.
Rectangle {
    property bool shown
    property real corners

    visible: shown
    anchors { fill: parent; margins: -3 }
    color: "transparent"
    radius: corners + 3
    border { width: 2; color: Theme.at(Theme.cyan, 0.8) }
}
