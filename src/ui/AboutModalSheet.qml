import QtQuick
import Kestrovan.Parts
import Kestrovan.Ui

Sheet {
    id: about

    required property AboutModalSheetLogic view

    objectName: "aboutModalSheet"
    isInFront: view.isInFront
    title: view.appName
    boxWidth: 440
    boxHeight: 440
    onDismissed: view.close()

    component Plan: Row {
        property alias symbol: mark.name
        property alias text: words.text
        property color color

        anchors.horizontalCenter: parent.horizontalCenter
        spacing: 6

        Symbol {
            id: mark
            anchors.verticalCenter: parent.verticalCenter
            color: parent.color
            size: 14
        }
        Label {
            id: words
            width: Math.min(implicitWidth, about.boxWidth - 52 - 32 - 20)
            wrapMode: Text.Wrap
            size: 11
            color: Theme.at(parent.color, 0.9)
        }
    }

    Column {
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 26 }
        spacing: 5

        SheetHeader {
            width: parent.width
            closeLabel: about.view.closeLabel
            onClosed: about.view.close()
        }
        AppLogoView {
            anchors.horizontalCenter: parent.horizontalCenter
            size: 76
        }
        Paragraph {
            objectName: "aboutName"
            width: parent.width
            text: about.view.appName
            size: 20
            weight: Theme.Bold
        }
        Paragraph {
            width: parent.width
            text: about.view.appSubtitle
            size: 12
            color: Theme.gray
        }
        Paragraph {
            objectName: "aboutVersion"
            width: parent.width
            text: about.view.version
            size: 11
            color: Theme.at(Theme.gray, 0.8)
        }
        Rectangle {
            x: 20
            width: parent.width - 40
            height: 1
            color: Theme.at(Theme.white, 0.12)
        }
        Rectangle {
            width: parent.width
            height: facts.height + 32
            radius: 10
            color: Theme.at(Theme.white, 0.05)

            Column {
                id: facts
                anchors { left: parent.left; right: parent.right; top: parent.top; margins: 16 }
                spacing: 3

                Paragraph {
                    width: parent.width
                    text: about.view.developer
                    size: 15
                    color: Theme.yellow
                }
                PlainButton {
                    objectName: "websiteButton"
                    anchors.horizontalCenter: parent.horizontalCenter
                    symbol: "globe"
                    text: about.view.website
                    size: 12
                    weight: Theme.Regular
                    foreground: Theme.cyan
                    isUnderlined: true
                    horizontalPadding: 4
                    verticalPadding: 1
                    radius: 4
                    onPressed: about.view.openWebsite()
                }
                Paragraph {
                    width: parent.width
                    sidePadding: 14
                    topPadding: 4
                    text: about.view.description
                    size: 12
                    color: Theme.at(Theme.white, 0.85)
                }
                Plan {
                    symbol: "laptopcomputer.and.iphone"
                    text: about.view.otherPlatforms
                    color: Theme.yellow
                }
                Plan {
                    symbol: "sparkles"
                    text: about.view.nextFeatures
                    color: Theme.cyan
                }
            }
        }
        Paragraph {
            width: parent.width
            text: about.view.copyright
            size: 11
            color: Theme.at(Theme.gray, 0.7)
        }
    }
}
