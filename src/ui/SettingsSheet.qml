import QtQuick
import Kestrovan.Parts
import Kestrovan.Ui

Sheet {
    id: settings

    required property SettingsSheetLogic view

    objectName: "settingsSheet"
    isInFront: view.isInFront
    title: view.title
    boxWidth: 490
    boxHeight: 670
    onDismissed: view.close()

    component Divider: Rectangle {
        width: parent.width
        height: 1
        color: Theme.at(Theme.white, 0.12)
    }

    ScrollArea {
        objectName: "settingsArea"
        anchors { fill: parent; margins: 1 }
        contentHeight: rows.height + 48

        Column {
            id: rows
            x: 24
            y: 24
            width: parent.width - 48
            spacing: 18

            SheetHeader {
                width: parent.width
                title: settings.view.title
                closeLabel: settings.view.closeLabel
                onClosed: settings.view.close()
            }
            Divider {}
            SettingsSection {
                width: parent.width
                symbol: "globe"
                title: settings.view.languageTitle

                SegmentedPicker {
                    objectName: "languagePicker"
                    width: parent.width
                    label: settings.view.languageTitle
                    labels: settings.view.languages
                    index: settings.view.languageIndex
                    onChosen: index => settings.view.chooseLanguage(index)
                }
            }
            Divider {}
            UpdateSettings {
                width: parent.width
                view: settings.view.updates
            }
            Divider {}
            CameraSettings {
                width: parent.width
                view: settings.view.camera
            }
            Divider {}
            WallpaperSettings {
                width: parent.width
                view: settings.view.wallpaper
            }
            Divider {}
            SettingsSection {
                width: parent.width
                title: settings.view.triggersTitle

                Toggle {
                    objectName: "chargerToggle"
                    width: parent.width
                    text: settings.view.chargerLabel
                    isOn: settings.view.isChargerOn
                    onFlipped: on => settings.view.setCharger(on)
                }
                Toggle {
                    objectName: "lidToggle"
                    width: parent.width
                    text: settings.view.lidLabel
                    isOn: settings.view.isLidOn
                    onFlipped: on => settings.view.setLid(on)
                }
            }
            Divider {}
            SettingsSection {
                width: parent.width
                title: settings.view.armingDelayTitle

                SegmentedPicker {
                    objectName: "armingDelayPicker"
                    width: parent.width
                    label: settings.view.armingDelayTitle
                    labels: settings.view.armingDelays
                    index: settings.view.armingDelayIndex
                    onChosen: index => settings.view.chooseArmingDelay(index)
                }
            }
            Divider {}
            PinSettings {
                width: parent.width
                view: settings.view.pin
            }
            Divider {}
            AboutBox {
                width: parent.width
                view: settings.view
            }
        }
    }
}
