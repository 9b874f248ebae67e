import QtQuick
import Kestrovan.Parts
import Kestrovan.Ui

Column {
    id: strip

    required property SensorStatusSectionLogic view

    component Chip: Capsule {
        id: chip

        property var trigger

        horizontalPadding: 8
        verticalPadding: 4
        radius: 6
        color: Theme.at(Theme.white, 0.06)
        Accessible.role: Accessible.CheckBox
        Accessible.name: trigger.label
        Accessible.checkable: true
        Accessible.checked: trigger.isOn
        Accessible.readOnly: true
        Accessible.ignored: !enabled

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: chip.trigger.symbol
            color: chip.trigger.color
            size: 13
        }
        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: chip.trigger.label
            size: 11
            weight: Theme.Medium
            color: Theme.at(Theme.white, 0.8)
            Accessible.ignored: true
        }
    }

    spacing: 12

    Item {
        width: parent.width
        height: Math.max(badge.height, levels.height)

        Rectangle {
            id: badge
            anchors.verticalCenter: parent.verticalCenter
            width: 38
            height: 38
            radius: 19
            color: Theme.at(strip.view.tone, 0.2)

            Symbol {
                objectName: "powerSymbol"
                anchors.centerIn: parent
                name: strip.view.symbol
                color: strip.view.tone
                size: 18
            }
        }
        Column {
            id: levels
            anchors { left: badge.right; leftMargin: 12; right: parent.right; verticalCenter: parent.verticalCenter }
            spacing: 3

            Label {
                objectName: "powerSource"
                text: strip.view.source
                size: 11
                weight: Theme.Heavy
                color: strip.view.tone
            }
            Label {
                objectName: "powerLevel"
                text: strip.view.level
                size: 12
                weight: Theme.Bold
            }
            Rectangle {
                width: parent.width
                height: 5
                radius: 2.5
                color: Theme.at(Theme.white, 0.1)

                Rectangle {
                    objectName: "levelBar"
                    width: parent.width * strip.view.levelFraction
                    height: 5
                    radius: 2.5
                    gradient: Gradient {
                        orientation: Gradient.Horizontal
                        GradientStop { position: 0; color: strip.view.tone }
                        GradientStop { position: 1; color: strip.view.barEnd }
                    }
                }
            }
        }
    }
    Row {
        spacing: 8

        Chip {
            objectName: "chargerChip"
            trigger: strip.view.charger
        }
        Chip {
            objectName: "lidChip"
            trigger: strip.view.lid
        }
        Chip {
            objectName: "cameraChip"
            trigger: strip.view.camera
        }
    }
}
