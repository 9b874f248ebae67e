import QtQuick
import Kestrovan.Parts
import Kestrovan.Ui

Rectangle {
    id: card

    required property MainGuardCardLogic view

    implicitHeight: content.implicitHeight + 44
    radius: 20
    color: Theme.at(Theme.white, 0.03)
    border { width: 1; color: Theme.at(Theme.white, 0.08) }

    Component {
        id: disarmed
        DisarmedView { view: card.view }
    }
    Component {
        id: arming
        ArmingView { view: card.view }
    }
    Component {
        id: armed
        ArmedView { view: card.view }
    }
    Loader {
        id: content
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 22 }
        sourceComponent: card.view.isDisarmed ? disarmed : card.view.isArming ? arming : card.view.isArmed ? armed : null
    }
}
