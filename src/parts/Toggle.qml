import QtQuick
import Kestrovan.Parts

// A switch with its label. `isOn` is what it shows; `flipped` asks for the other.
Item {
    id: toggle

    property bool isOn
    property alias text: label.text
    property alias size: label.size

    signal flipped(bool on)

    implicitWidth: knobless.width + 10 + label.implicitWidth
    implicitHeight: Math.max(knobless.height, label.implicitHeight)
    activeFocusOnTab: true
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.focusable: true
    Accessible.ignored: !enabled
    Accessible.checkable: true
    Accessible.checked: isOn
    Accessible.onPressAction: flipped(!isOn)
    Accessible.onToggleAction: flipped(!isOn)
    Keys.onSpacePressed: flipped(!isOn)
    Keys.onReturnPressed: flipped(!isOn)
    Keys.onEnterPressed: flipped(!isOn)

    Rectangle {
        id: knobless
        anchors.verticalCenter: parent.verticalCenter
        width: 34
        height: 20
        radius: 10
        color: toggle.isOn ? Theme.green : Theme.at(Theme.white, 0.2)

        Rectangle {
            x: toggle.isOn ? 16 : 2
            y: 2
            width: 16
            height: 16
            radius: 8
            color: Theme.white
        }
        FocusRing {
            shown: toggle.activeFocus
            corners: 10
        }
    }
    Label {
        id: label
        anchors { left: knobless.right; leftMargin: 10; right: parent.right; verticalCenter: parent.verticalCenter }
        wrapMode: Text.Wrap
        size: 12
        Accessible.ignored: true
    }
    MouseArea {
        anchors.fill: parent
        cursorShape: Qt.PointingHandCursor
        onClicked: toggle.flipped(!toggle.isOn)
    }
}
