import QtQuick
import Kestrovan.Parts
import Kestrovan.Ui

Column {
    id: arming

    required property MainGuardCardLogic view

    spacing: 18

    CountdownRing {
        objectName: "countdownRing"
        anchors.horizontalCenter: parent.horizontalCenter
        width: 84
        height: 84
        fraction: arming.view.ringFraction
        color: Theme.orange

        Label {
            objectName: "secondsLeft"
            anchors.centerIn: parent
            text: arming.view.secondsLeft
            size: 34
            weight: Theme.Heavy
            color: Theme.orange
        }
    }
    Paragraph {
        width: parent.width
        text: arming.view.armingTitle
        size: 17
        weight: Theme.Bold
    }
    Paragraph {
        width: parent.width
        text: arming.view.armingDescription
        size: 12
        color: Theme.gray
    }
    PlainButton {
        objectName: "cancelButton"
        anchors.horizontalCenter: parent.horizontalCenter
        text: arming.view.cancelLabel
        size: 13
        weight: Theme.Semibold
        foreground: Theme.at(Theme.white, 0.8)
        horizontalPadding: 20
        verticalPadding: 8
        radius: 8
        color: Theme.at(Theme.white, 0.1)
        onPressed: arming.view.cancel()
    }
}
