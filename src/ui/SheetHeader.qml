import QtQuick
import Kestrovan.Parts

// The top row of a sheet: what it is, and its end.
Item {
    id: header

    property string symbol
    property string title
    property string closeLabel

    signal closed

    implicitHeight: close.implicitHeight

    Symbol {
        id: mark
        anchors.verticalCenter: parent.verticalCenter
        visible: header.symbol !== ""
        name: header.symbol
        color: Theme.yellow
        size: 20
    }
    Label {
        objectName: "sheetTitle"
        anchors {
            left: mark.visible ? mark.right : parent.left; leftMargin: mark.visible ? 8 : 0
            right: close.left; rightMargin: 12
            verticalCenter: parent.verticalCenter
        }
        elide: Text.ElideRight
        text: header.title
        size: 17
        weight: Theme.Bold
    }
    BorderedButton {
        id: close
        objectName: "closeButton"
        anchors.right: parent.right
        text: header.closeLabel
        onPressed: header.closed()
    }
}
