import QtQuick
import Kestrovan.Parts
import Kestrovan.Ui

SettingsSection {
    id: camera

    required property CameraSettingsLogic view

    symbol: "camera.fill"
    symbolColor: Theme.yellow
    title: view.title

    Label {
        width: parent.width
        wrapMode: Text.Wrap
        text: camera.view.description
        size: 11
        color: Theme.gray
    }
    Toggle {
        objectName: "captureToggle"
        width: parent.width
        text: camera.view.captureLabel
        isOn: camera.view.isCaptureOn
        onFlipped: on => camera.view.setCapture(on)
    }
    Column {
        x: 6
        width: parent.width - 6
        visible: camera.view.isCaptureOn
        spacing: 6

        Label {
            text: camera.view.delayTitle
            size: 11
            weight: Theme.Semibold
        }
        Label {
            width: parent.width
            wrapMode: Text.Wrap
            text: camera.view.delayDescription
            size: 10
            color: Theme.gray
        }
        SegmentedPicker {
            objectName: "cameraDelayPicker"
            width: parent.width
            label: camera.view.delayTitle
            labels: camera.view.delays
            index: camera.view.delayIndex
            onChosen: index => camera.view.chooseDelay(index)
        }
    }
    Flow {
        width: parent.width
        spacing: 10

        BorderedButton {
            objectName: "photosButton"
            symbol: "photo.stack"
            text: camera.view.photosLabel
            size: 11
            weight: Theme.Semibold
            onPressed: camera.view.showPhotos()
        }
        PlainButton {
            objectName: "folderButton"
            symbol: "folder"
            text: camera.view.folderLabel
            size: 11
            weight: Theme.Regular
            foreground: Theme.cyan
            horizontalPadding: 2
            verticalPadding: 5
            radius: 4
            onPressed: camera.view.openFolder()
        }
    }
}
