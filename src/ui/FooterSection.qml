import QtQuick
import Kestrovan.Parts
import Kestrovan.Ui

Item {
    id: footer

    required property FooterSectionLogic view

    component FooterButton: PlainButton {
        size: 11
        weight: Theme.Medium
        horizontalPadding: 8
        verticalPadding: 6
        radius: 6
    }

    implicitHeight: buttons.height

    Row {
        id: buttons
        spacing: 8

        FooterButton {
            objectName: "galleryButton"
            symbol: "camera.fill"
            text: footer.view.galleryLabel
            help: footer.view.galleryHelp
            weight: Theme.Semibold
            foreground: footer.view.galleryColor
            horizontalPadding: 9
            color: Theme.at(Theme.white, 0.08)
            onPressed: footer.view.showGallery()
        }
        FooterButton {
            objectName: "updateButton"
            symbol: "arrow.triangle.2.circlepath"
            text: footer.view.updateLabel
            help: footer.view.updateHelp
            foreground: Theme.cyan
            color: Theme.at(Theme.cyan, 0.1)
            onPressed: footer.view.checkForUpdates()
        }
        FooterButton {
            objectName: "previewButton"
            symbol: "arrow.up.left.and.arrow.down.right"
            text: footer.view.previewLabel
            foreground: Theme.at(Theme.white, 0.8)
            color: Theme.at(Theme.white, 0.06)
            onPressed: footer.view.previewDeterrent()
        }
    }
    Row {
        anchors { right: parent.right; verticalCenter: parent.verticalCenter }
        spacing: 4

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: footer.view.pinSymbol
            color: Theme.gray
            size: 10
        }
        Label {
            objectName: "pinIndicator"
            text: footer.view.pinLabel
            size: 11
            color: Theme.gray
        }
    }
}
