import QtQuick
import Kestrovan.Parts
import Kestrovan.Overlay

Rectangle {
    id: panel

    required property FullscreenOverlayLogic view

    width: column.width + 40
    height: column.height + 28
    radius: 16
    color: Theme.at(Theme.black, 0.55)

    Column {
        id: column
        anchors.centerIn: parent
        spacing: 10

        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 6

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: "key.fill"
                color: Theme.cyan
                size: 16
            }
            Label {
                objectName: "pinLabel"
                anchors.verticalCenter: parent.verticalCenter
                text: panel.view.pinLabel
                size: 13
                weight: Theme.Bold
            }
        }
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 10

            SecureField {
                objectName: "pinField"
                width: 170
                value: panel.view.enteredPin
                placeholder: "PIN..."
                label: panel.view.pinLabel
                color: Theme.at(Theme.black, 0.8)
                radius: 10
                showsFocus: false
                border.width: 1.5
                border.color: isFocused ? panel.view.pinFocusedOutlineColor : panel.view.pinOutlineColor
                onEdited: text => panel.view.editPin(text)
                onSubmitted: panel.view.submit()
                Component.onCompleted: takeFocus()
            }
            PlainButton {
                objectName: "unlock"
                anchors.verticalCenter: parent.verticalCenter
                text: panel.view.unlockText
                symbol: "lock.open.fill"
                size: 13
                weight: Theme.Bold
                foreground: Theme.black
                color: Theme.white
                horizontalPadding: 16
                verticalPadding: 10
                radius: 10
                onPressed: panel.view.submit()
            }
        }
        PinKeypad {
            objectName: "keypad"
            anchors.horizontalCenter: parent.horizontalCenter
            keyWidth: 48
            keyHeight: 34
            size: 16
            corners: 8
            digitOpacity: 0.2
            commandOpacity: 0.12
            isLocked: panel.view.isLockedOut
            onKeyPressed: key => panel.view.handleKeypadPress(key)
        }
        Label {
            objectName: "hint"
            anchors.horizontalCenter: parent.horizontalCenter
            text: panel.view.hint
            size: 10
            weight: Theme.Medium
            color: Theme.at(Theme.white, 0.6)
        }
        Label {
            objectName: "statusLine"
            anchors.horizontalCenter: parent.horizontalCenter
            visible: text !== ""
            text: panel.view.statusLine
            size: 13
            weight: panel.view.statusLineWeight
            color: panel.view.statusLineColor
        }
    }
}
