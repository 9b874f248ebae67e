import QtQuick
import Kestrovan.Parts
import Kestrovan.Overlay

Column {
    id: notice

    required property FullscreenOverlayLogic view

    spacing: 14

    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        width: 90
        height: 90
        radius: 45
        color: Theme.red

        SoftShadow {
            z: -1
            anchors { fill: parent; margins: -blur }
            cornerRadius: 45
            blur: 16
            color: Theme.at(Theme.black, 0.6)
        }
        Symbol {
            objectName: "alarmSymbol"
            anchors.centerIn: parent
            name: notice.view.alarmSymbol
            size: 46
        }
    }
    Label {
        objectName: "alarmTitle"
        width: parent.width
        text: notice.view.alarmTitle
        size: 30
        weight: Theme.Heavy
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
    }
    Label {
        objectName: "alarmCause"
        width: parent.width
        text: notice.view.alarmCause
        size: 20
        weight: Theme.Bold
        color: Theme.yellow
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
    }
    Capsule {
        anchors.horizontalCenter: parent.horizontalCenter
        horizontalPadding: 10
        verticalPadding: 5
        color: Theme.at(Theme.black, 0.8)
        border { width: 1; color: Theme.at(Theme.yellow, 0.6) }

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: "lock.shield.fill"
            color: Theme.yellow
            size: 13
        }
        Label {
            objectName: "lockdownBanner"
            anchors.verticalCenter: parent.verticalCenter
            text: notice.view.lockdownBanner
            size: 10
            weight: Theme.Heavy
            design: Theme.Rounded
        }
    }
}
