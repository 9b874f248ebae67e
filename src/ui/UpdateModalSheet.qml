import QtQuick
import Kestrovan.Parts
import Kestrovan.Ui

Sheet {
    id: sheet

    required property UpdateModalSheetLogic view

    objectName: "updateModalSheet"
    isInFront: view.isInFront
    title: view.retryLabel
    boxWidth: 440
    boxHeight: 430
    onDismissed: view.close()

    Column {
        anchors { fill: parent; margins: 26 }
        spacing: 14

        SheetHeader {
            width: parent.width
            closeLabel: sheet.view.closeLabel
            onClosed: sheet.view.close()
        }
        AppLogoView {
            anchors.horizontalCenter: parent.horizontalCenter
            size: 64
        }
        Loader {
            width: parent.width
            sourceComponent: sheet.view.isChecking ? checking
                           : sheet.view.isUpToDate ? upToDate
                           : sheet.view.isUpdateAvailable ? available
                           : sheet.view.isError ? failed : null
        }
    }

    Component {
        id: checking

        Column {
            topPadding: 20
            bottomPadding: 20
            spacing: 12

            Spinner {
                objectName: "spinner"
                anchors.horizontalCenter: parent.horizontalCenter
                scale: 1.2
                turn: sheet.view.spinnerTurn
            }
            Paragraph {
                objectName: "checkingLabel"
                width: parent.width
                text: sheet.view.checkingLabel
                size: 13
                color: Theme.gray
            }
        }
    }
    Component {
        id: upToDate

        Column {
            spacing: 10

            Symbol {
                anchors.horizontalCenter: parent.horizontalCenter
                name: "checkmark.seal.fill"
                color: Theme.green
                size: 40
            }
            Paragraph {
                objectName: "upToDateTitle"
                width: parent.width
                text: sheet.view.upToDateTitle
                size: 16
                weight: Theme.Bold
            }
            Paragraph {
                objectName: "currentVersion"
                width: parent.width
                text: sheet.view.currentVersion
                size: 12
                color: Theme.gray
            }
            Paragraph {
                width: parent.width
                text: sheet.view.upToDateDescription
                size: 11
                color: Theme.gray
            }
        }
    }
    Component {
        id: available

        Column {
            spacing: 10

            Paragraph {
                objectName: "newVersion"
                width: parent.width
                text: sheet.view.newVersion
                size: 18
                weight: Theme.Bold
                color: Theme.yellow
            }
            Paragraph {
                objectName: "currentVersion"
                width: parent.width
                text: sheet.view.currentVersion
                size: 11
                color: Theme.gray
            }
            Label {
                text: sheet.view.notesTitle
                size: 12
                weight: Theme.Bold
            }
            Rectangle {
                width: parent.width
                height: 100
                radius: 8
                color: Theme.at(Theme.white, 0.06)

                ScrollArea {
                    objectName: "notesArea"
                    anchors.fill: parent
                    contentHeight: notes.height

                    Label {
                        id: notes
                        objectName: "notes"
                        width: parent.width
                        padding: 10
                        wrapMode: Text.Wrap
                        text: sheet.view.notes
                        size: 12
                        color: Theme.at(Theme.white, 0.9)
                    }
                }
            }
            PlainButton {
                objectName: "downloadButton"
                width: parent.width
                symbol: "arrow.down.circle.fill"
                text: sheet.view.downloadLabel
                size: 13
                weight: Theme.Bold
                verticalPadding: 12
                radius: 10
                color: Theme.blue
                gradient: Gradient {
                    orientation: Gradient.Horizontal
                    GradientStop { position: 0; color: Theme.blue }
                    GradientStop { position: 1; color: Theme.cyan }
                }
                onPressed: sheet.view.download()
            }
        }
    }
    Component {
        id: failed

        Column {
            spacing: 10

            Symbol {
                anchors.horizontalCenter: parent.horizontalCenter
                name: "exclamationmark.triangle.fill"
                color: Theme.orange
                size: 38
            }
            Paragraph {
                objectName: "errorTitle"
                width: parent.width
                text: sheet.view.errorTitle
                size: 15
                weight: Theme.Bold
            }
            Paragraph {
                objectName: "errorMessage"
                width: parent.width
                text: sheet.view.errorMessage
                size: 11
                color: Theme.gray
            }
            BorderedButton {
                objectName: "retryButton"
                anchors.horizontalCenter: parent.horizontalCenter
                text: sheet.view.retryLabel
                onPressed: sheet.view.retry()
            }
        }
    }
}
