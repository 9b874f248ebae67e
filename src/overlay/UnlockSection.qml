import QtQuick
import Kestrovan.Parts
import Kestrovan.Overlay

Item {
    id: section

    required property FullscreenOverlayLogic view
    readonly property Item shown: view.isPinNeeded ? pin : disarm

    width: shown.width
    height: shown.height

    PlainButton {
        id: disarm
        objectName: "disarm"
        visible: !section.view.isPinNeeded
        text: section.view.disarmText
        symbol: "lock.open.fill"
        size: 15
        weight: Theme.Heavy
        foreground: section.view.disarmTextColor
        color: section.view.disarmFillColor
        horizontalPadding: 30
        verticalPadding: 14
        radius: 14
        onPressed: section.view.submit()

        SoftShadow {
            z: -1
            anchors { fill: parent; margins: -blur }
            cornerRadius: 14
            blur: 10
            color: Theme.at(Theme.black, 0.5)
        }
    }
    PinPanel {
        id: pin
        visible: section.view.isPinNeeded
        view: section.view
    }
}
