import QtQuick
import Kestrovan.Parts
import Kestrovan.Ui

Column {
    id: armed

    required property MainGuardCardLogic view

    spacing: 18

    Item {
        anchors.horizontalCenter: parent.horizontalCenter
        width: 100
        height: 100

        Rectangle {
            objectName: "badge"
            anchors.fill: parent
            radius: 50
            color: Theme.green
            opacity: armed.view.badgeOpacity
            scale: armed.view.badgeScale
        }
        AppLogoView {
            anchors.centerIn: parent
            size: 64
            shadowColor: Theme.at(Theme.green, 0.8)
            shadowBlur: 10
        }
    }
    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        spacing: 8

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            width: 8
            height: 8
            radius: 4
            color: Theme.green
        }
        Label {
            objectName: "activeTitle"
            text: armed.view.activeTitle
            size: 15
            weight: Theme.Heavy
            color: Theme.green
        }
    }
    Paragraph {
        width: parent.width
        sidePadding: 10
        text: armed.view.activeDescription
        size: 12
        color: Theme.at(Theme.white, 0.85)
    }
    PlainButton {
        objectName: "disarmButton"
        width: parent.width
        symbol: "lock.open.fill"
        text: armed.view.disarmLabel
        size: 13
        weight: Theme.Bold
        spacing: 8
        verticalPadding: 12
        radius: 10
        color: Theme.at(Theme.red, 0.8)
        onPressed: armed.view.disarm()
    }
}
