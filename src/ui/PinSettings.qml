import QtQuick
import Kestrovan.Parts
import Kestrovan.Ui

SettingsSection {
    id: pin

    required property PinSettingsLogic view

    title: view.title

    Toggle {
        objectName: "pinToggle"
        width: parent.width
        text: pin.view.requireLabel
        isOn: pin.view.isRequired
        onFlipped: on => pin.view.setRequired(on)
    }
    Column {
        x: 10
        width: parent.width - 10
        visible: pin.view.isRequired
        spacing: 6

        Label {
            text: pin.view.changeLabel
            size: 12
            color: Theme.gray
        }
        Row {
            spacing: 10

            TextEntry {
                objectName: "newPinField"
                anchors.verticalCenter: parent.verticalCenter
                width: 140
                echoMode: TextInput.Password
                label: pin.view.changeLabel
                placeholder: pin.view.placeholder
                value: pin.view.newPinInput
                accept: text => pin.view.enterNewPin(text)
            }
            BorderedButton {
                objectName: "savePinButton"
                anchors.verticalCenter: parent.verticalCenter
                isUsable: pin.view.canSave
                text: pin.view.saveLabel
                onPressed: pin.view.save()
            }
        }
        Label {
            objectName: "pinSaved"
            visible: pin.view.pinChangeSuccess
            text: pin.view.savedMessage
            size: 11
            color: Theme.green
        }
    }
}
