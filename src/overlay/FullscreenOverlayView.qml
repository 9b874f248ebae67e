import QtQuick
import Kestrovan.Parts
import Kestrovan.Overlay

Item {
    id: root

    required property FullscreenOverlayLogic view
    readonly property size area: Qt.size(width, height)

    onAreaChanged: view.resize(area, Screen.devicePixelRatio)

    Picture {
        objectName: "backdrop"
        anchors.fill: parent
        image: root.view.backdrop // qmllint disable
    }
    Rectangle {
        objectName: "strobe"
        anchors.fill: parent
        visible: root.view.isAlarm
        color: Theme.red
        opacity: root.view.strobeOpacity
    }

    // Everything keeps its size as long as the screen has room for it; on smaller ones all of it shrinks.
    Item {
        id: content

        readonly property real spacing: 20
        readonly property real neededWidth: Math.max(bar.implicitWidth, unlock.width) + 80
        readonly property real neededHeight: bar.height + card.height + unlock.height + 4 * spacing + 60
        readonly property real fit: Math.min(1, root.width / neededWidth, root.height / neededHeight)
        readonly property real spare: height - neededHeight

        width: root.width / fit
        height: root.height / fit
        scale: fit
        transformOrigin: Item.TopLeft

        TopInformationBar {
            id: bar
            anchors { top: parent.top; left: parent.left; right: parent.right }
            anchors { topMargin: 30; leftMargin: 40; rightMargin: 40 }
            view: root.view
        }
        WarningCard {
            id: card
            width: Math.min(620, parent.width - 80)
            anchors { horizontalCenter: parent.horizontalCenter; top: bar.bottom }
            anchors.topMargin: 2 * parent.spacing + parent.spare / 2
            view: root.view
        }
        UnlockSection {
            id: unlock
            anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom; bottomMargin: 30 }
            view: root.view
        }
    }
}
