import QtQuick
import Kestrovan.Parts

// A box over its parent, which it dims. Escape and a press beside the box ask to be rid of it. While it is not in
// front it keeps its place but nothing in it can be reached.
FocusScope {
    id: sheet

    property bool isInFront: true
    property string title
    property real boxWidth
    property real boxHeight
    default property alias content: box.data

    signal dismissed

    anchors.fill: parent
    enabled: isInFront
    focus: isInFront
    Keys.onEscapePressed: dismissed()
    Accessible.role: Accessible.Dialog
    Accessible.name: title

    Rectangle {
        anchors.fill: parent
        color: Theme.at(Theme.black, 0.5)

        MouseArea {
            anchors.fill: parent
            hoverEnabled: true
            acceptedButtons: Qt.AllButtons
            onClicked: sheet.dismissed()
            onWheel: {}
        }
    }
    SoftShadow {
        anchors { fill: box; margins: -blur }
        cornerRadius: box.radius
        blur: 18
        color: Theme.at(Theme.black, 0.5)
    }
    Rectangle {
        id: box
        anchors.centerIn: parent
        width: sheet.boxWidth
        height: sheet.boxHeight
        radius: 12
        color: "#1e212b"
        border { width: 1; color: Theme.at(Theme.white, 0.14) }

        MouseArea {
            anchors.fill: parent
            hoverEnabled: true
            acceptedButtons: Qt.AllButtons
            onWheel: {}
        }
    }
}
