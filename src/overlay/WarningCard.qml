import QtQuick
import Kestrovan.Parts
import Kestrovan.Overlay

Rectangle {
    id: card

    required property FullscreenOverlayLogic view
    readonly property Item shown: view.isAlarm ? alarm : calm

    implicitHeight: shown.implicitHeight + 48
    radius: 20
    color: Theme.at(Theme.black, 0.6)
    border { width: 1; color: Theme.at(Theme.white, 0.15) }

    SoftShadow {
        z: -1
        anchors { fill: parent; margins: -blur }
        cornerRadius: card.radius
        blur: 20
        color: Theme.at(Theme.black, 0.5)
    }
    AlarmNotice {
        id: alarm
        anchors { fill: parent; margins: 24 }
        visible: card.view.isAlarm
        view: card.view
    }
    CalmNotice {
        id: calm
        anchors { fill: parent; margins: 24 }
        visible: !card.view.isAlarm
        view: card.view
    }
}
