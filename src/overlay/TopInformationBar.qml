import QtQuick
import Kestrovan.Parts
import Kestrovan.Overlay

Item {
    id: bar

    required property FullscreenOverlayLogic view

    implicitWidth: clock.implicitWidth + 40 + capsules.implicitWidth
    implicitHeight: Math.max(clock.implicitHeight, capsules.implicitHeight)

    Column {
        id: clock
        anchors { left: parent.left; verticalCenter: parent.verticalCenter }
        spacing: 2

        Label {
            objectName: "time"
            text: bar.view.timeText
            size: 34
            weight: Theme.Bold
            design: Theme.Rounded
        }
        Label {
            objectName: "date"
            text: bar.view.dateText
            size: 13
            weight: Theme.Medium
            color: Theme.gray
        }
    }
    Row {
        id: capsules
        anchors { right: parent.right; verticalCenter: parent.verticalCenter }
        spacing: 12

        Capsule {
            anchors.verticalCenter: parent.verticalCenter
            horizontalPadding: 12
            verticalPadding: 6
            color: Theme.at(Theme.black, 0.6)

            Symbol {
                objectName: "powerSymbol"
                anchors.verticalCenter: parent.verticalCenter
                name: bar.view.powerSymbol
                color: bar.view.powerColor
                size: 16
            }
            Label {
                objectName: "power"
                anchors.verticalCenter: parent.verticalCenter
                text: bar.view.powerText
                size: 13
                weight: Theme.Bold
                design: Theme.Monospaced
            }
        }
        Capsule {
            objectName: "statusCapsule"
            anchors.verticalCenter: parent.verticalCenter
            horizontalPadding: 14
            verticalPadding: 6
            color: bar.view.statusFillColor
            border { width: 1; color: bar.view.statusOutlineColor }

            Rectangle {
                objectName: "statusDot"
                anchors.verticalCenter: parent.verticalCenter
                width: 8
                height: 8
                radius: 4
                color: bar.view.statusDotColor
            }
            Label {
                objectName: "status"
                anchors.verticalCenter: parent.verticalCenter
                text: bar.view.statusText
                size: 12
                weight: Theme.Heavy
                design: Theme.Rounded
            }
        }
        PlainButton {
            objectName: "closePreview"
            anchors.verticalCenter: parent.verticalCenter
            visible: bar.view.isPreview
            text: bar.view.closePreviewText
            symbol: "xmark.circle.fill"
            size: 12
            weight: Theme.Bold
            spacing: 4
            horizontalPadding: 12
            verticalPadding: 6
            radius: 20
            color: Theme.at(Theme.red, 0.8)
            onPressed: bar.view.closePreview()
        }
    }
}
