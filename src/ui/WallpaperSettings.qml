import QtQuick
import Kestrovan.Parts
import Kestrovan.Ui

SettingsSection {
    id: wallpaper

    required property WallpaperSettingsLogic view

    symbol: "photo.artframe"
    title: view.title

    Label {
        width: parent.width
        wrapMode: Text.Wrap
        text: wallpaper.view.description
        size: 11
        color: Theme.gray
    }
    Row {
        spacing: 14

        Rectangle {
            width: 110
            height: 70
            radius: 8
            color: Theme.at(Theme.white, 0.08)

            Picture {
                objectName: "preview"
                anchors.fill: parent
                visible: wallpaper.view.hasPreview
                image: wallpaper.view.preview // qmllint disable
            }
            AppLogoView {
                anchors.centerIn: parent
                visible: !wallpaper.view.hasPreview
                size: 48
            }
        }
        Column {
            anchors.verticalCenter: parent.verticalCenter
            spacing: 8

            BorderedButton {
                objectName: "chooseButton"
                isProminent: true
                tint: Theme.cyan
                text: wallpaper.view.chooseLabel
                onPressed: wallpaper.view.choose()
            }
            PlainButton {
                objectName: "removeButton"
                visible: wallpaper.view.canRemove
                text: wallpaper.view.removeLabel
                size: 11
                weight: Theme.Regular
                foreground: Theme.red
                horizontalPadding: 2
                verticalPadding: 2
                radius: 3
                onPressed: wallpaper.view.remove()
            }
        }
    }
    Column {
        width: parent.width
        spacing: 4

        Label {
            text: wallpaper.view.warningLabel
            size: 11
            color: Theme.gray
        }
        TextEntry {
            objectName: "warningField"
            width: parent.width
            label: wallpaper.view.warningLabel
            placeholder: wallpaper.view.warningPlaceholder
            value: wallpaper.view.warning
            accept: text => wallpaper.view.setWarning(text)
        }
    }
    Toggle {
        objectName: "armedToggle"
        width: parent.width
        text: wallpaper.view.armedLabel
        isOn: wallpaper.view.isShownWhenArmed
        onFlipped: on => wallpaper.view.showWhenArmed(on)
    }
    Toggle {
        objectName: "triggeredToggle"
        width: parent.width
        text: wallpaper.view.triggeredLabel
        isOn: wallpaper.view.isShownWhenTriggered
        onFlipped: on => wallpaper.view.showWhenTriggered(on)
    }
}
