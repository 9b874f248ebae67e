import QtQuick
import Kestrovan.Parts
import Kestrovan.Ui

Item {
    id: panel

    required property AlarmTriggeredOverlayLogic view

    objectName: "alarmTriggeredOverlay"
    Accessible.role: Accessible.AlertMessage
    Accessible.name: panel.view.title + " " + panel.view.reason

    Rectangle {
        objectName: "alarmRed"
        anchors.fill: parent
        color: Theme.red
        opacity: panel.view.redOpacity
    }
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        onPositionChanged: if (pressed) panel.Window.window.startSystemMove()
    }

    Column {
        anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; margins: 30 }
        spacing: 16

        AppLogoView {
            anchors.horizontalCenter: parent.horizontalCenter
            size: 74
            shadowColor: Theme.at(Theme.black, 0.4)
            shadowBlur: 10
        }
        Paragraph {
            objectName: "alarmTitle"
            width: parent.width
            text: panel.view.title
            size: 24
            weight: Theme.Heavy
        }
        Paragraph {
            objectName: "alarmReason"
            width: parent.width
            text: panel.view.reason
            size: 16
            weight: Theme.Bold
            color: Theme.yellow
        }
        Capsule {
            anchors.horizontalCenter: parent.horizontalCenter
            horizontalPadding: 8
            verticalPadding: 4
            color: Theme.at(Theme.black, 0.8)

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: "lock.shield.fill"
                color: Theme.yellow
                size: 11
            }
            Label {
                objectName: "lockdownBanner"
                text: panel.view.banner
                size: 9
                weight: Theme.Heavy
            }
        }
        Capsule {
            objectName: "photoBadge"
            anchors.horizontalCenter: parent.horizontalCenter
            visible: panel.view.isPhotoBadgeShown
            horizontalPadding: 10
            verticalPadding: 4
            color: Theme.at(Theme.black, 0.5)

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: "camera.badge.ellipsis"
                size: 14
            }
            Label {
                text: panel.view.photoBadge
                size: 11
                weight: Theme.Bold
            }
        }
        Loader {
            anchors.horizontalCenter: parent.horizontalCenter
            sourceComponent: panel.view.isPinAsked ? pinEntry : stopButton
        }
    }

    Component {
        id: stopButton

        PlainButton {
            objectName: "stopButton"
            text: panel.view.stopLabel
            size: 15
            weight: Theme.Heavy
            foreground: Theme.red
            horizontalPadding: 28
            verticalPadding: 14
            radius: 12
            color: Theme.white
            onPressed: panel.view.stop()
        }
    }
    Component {
        id: pinEntry

        Rectangle {
            implicitWidth: Math.max(340, entry.implicitWidth + 28)
            implicitHeight: entry.implicitHeight + 28
            radius: 14
            color: Theme.at(Theme.black, 0.5)

            Column {
                id: entry
                anchors.centerIn: parent
                spacing: 12

                Paragraph {
                    objectName: "pinMessage"
                    width: Math.min(implicitWidth, panel.width - 60 - 28)
                    anchors.horizontalCenter: parent.horizontalCenter
                    visible: text !== ""
                    text: panel.view.message
                    size: 12
                    weight: panel.view.isLocked ? Theme.Heavy : Theme.Bold
                    color: Theme.yellow
                }
                Row {
                    anchors.horizontalCenter: parent.horizontalCenter
                    spacing: 10

                    SecureField {
                        id: field
                        objectName: "pinField"
                        width: 150
                        enabled: !panel.view.isLocked
                        opacity: enabled ? 1 : 0.4
                        padding: 10
                        radius: 8
                        color: Theme.at(Theme.black, 0.7)
                        value: panel.view.enteredPin
                        placeholder: panel.view.pinPlaceholder
                        label: panel.view.pinPrompt
                        onEdited: text => panel.view.enterPin(text)
                        onSubmitted: panel.view.unlock()
                        Component.onCompleted: takeFocus()
                        onEnabledChanged: if (enabled) takeFocus()
                    }
                    PlainButton {
                        objectName: "unlockButton"
                        anchors.verticalCenter: parent.verticalCenter
                        isUsable: !panel.view.isLocked
                        text: panel.view.unlockLabel
                        size: 13
                        weight: Theme.Heavy
                        foreground: Theme.black
                        horizontalPadding: 16
                        verticalPadding: 10
                        radius: 8
                        color: Theme.white
                        onPressed: panel.view.unlock()
                    }
                }
                PinKeypad {
                    anchors.horizontalCenter: parent.horizontalCenter
                    isLocked: panel.view.isLocked
                    keyWidth: 44
                    keyHeight: 32
                    size: 15
                    digitOpacity: 0.15
                    commandOpacity: 0.25
                    corners: 6
                    onKeyPressed: key => panel.view.pressKey(key)
                }
            }
        }
    }
}
