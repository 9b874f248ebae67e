import QtQuick
import Kestrovan.Parts

// A titled group of settings.
Column {
    id: section

    property string symbol
    property color symbolColor: Theme.cyan
    property string title

    spacing: 10

    Row {
        spacing: 6

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: section.symbol !== ""
            name: section.symbol
            color: section.symbolColor
            size: 16
        }
        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: section.title
            size: 13
            weight: Theme.Bold
        }
    }
}
