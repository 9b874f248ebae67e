import QtQuick
import Kestrovan.Parts
import Kestrovan.Ui

SettingsSection {
    id: updates

    required property UpdateSettingsLogic view

    symbol: "arrow.triangle.2.circlepath"
    title: view.title

    Item {
        width: parent.width
        height: check.height

        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: updates.view.version
            size: 12
            color: Theme.gray
        }
        BorderedButton {
            id: check
            objectName: "checkButton"
            anchors.right: parent.right
            isProminent: true
            tint: Theme.cyan
            text: updates.view.checkLabel
            size: 11
            weight: Theme.Semibold
            onPressed: updates.view.check()
        }
    }
    Toggle {
        objectName: "automaticToggle"
        width: parent.width
        text: updates.view.automaticLabel
        isOn: updates.view.isAutomatic
        onFlipped: on => updates.view.setAutomatic(on)
    }
    Column {
        width: parent.width
        spacing: 4

        Label {
            text: updates.view.serverLabel
            size: 10
            color: Theme.gray
        }
        TextEntry {
            objectName: "serverField"
            width: parent.width
            label: updates.view.serverLabel
            placeholder: updates.view.serverPlaceholder
            value: updates.view.server
            accept: text => updates.view.setServer(text)
        }
    }
    PlainButton {
        objectName: "simulateButton"
        text: updates.view.simulateLabel
        size: 10
        weight: Theme.Regular
        foreground: Theme.yellow
        horizontalPadding: 0
        verticalPadding: 2
        radius: 3
        onPressed: updates.view.simulate()
    }
}
