import QtQuick
import Kestrovan.Parts
import Kestrovan.Ui

Column {
    id: disarmed

    required property MainGuardCardLogic view

    spacing: 18

    AppLogoView {
        anchors.horizontalCenter: parent.horizontalCenter
        size: 80
    }
    Paragraph {
        width: parent.width
        text: disarmed.view.inactiveTitle
        size: 19
        weight: Theme.Bold
    }
    Paragraph {
        width: parent.width
        sidePadding: 10
        text: disarmed.view.inactiveDescription
        size: 12
        color: Theme.gray
    }
    Item {
        width: parent.width
        height: arm.height

        SoftShadow {
            anchors { fill: parent; margins: -blur }
            cornerRadius: arm.radius
            blur: 8
            color: Theme.at(Theme.blue, 0.4)
        }
        PlainButton {
            id: arm
            objectName: "armButton"
            width: parent.width
            symbol: "lock.shield.fill"
            text: disarmed.view.armLabel
            size: 14
            weight: Theme.Bold
            spacing: 8
            verticalPadding: 14
            radius: 12
            color: Theme.blue
            gradient: Gradient {
                orientation: Gradient.Horizontal
                GradientStop { position: 0; color: Theme.blue }
                GradientStop { position: 1; color: Theme.cyan }
            }
            onPressed: disarmed.view.arm()
        }
    }
}
