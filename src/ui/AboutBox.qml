import QtQuick
import Kestrovan.Parts
import Kestrovan.Ui

Column {
    id: about

    required property SettingsSheetLogic view

    spacing: 2

    Rectangle {
        width: parent.width
        height: facts.height + 24
        radius: 10
        color: Theme.at(Theme.white, 0.05)

        SettingsSection {
            id: facts
            anchors { left: parent.left; right: parent.right; top: parent.top; margins: 12 }
            spacing: 6
            symbol: "info.circle.fill"
            title: about.view.aboutTitle

            Label {
                objectName: "product"
                text: about.view.product
                size: 13
            }
            Label {
                text: about.view.developer
                size: 12
                color: Theme.yellow
            }
            PlainButton {
                objectName: "websiteButton"
                symbol: "globe"
                text: about.view.website
                size: 11
                weight: Theme.Regular
                foreground: Theme.cyan
                horizontalPadding: 0
                verticalPadding: 2
                radius: 3
                onPressed: about.view.openWebsite()
            }
        }
    }
    Label {
        width: parent.width
        wrapMode: Text.Wrap
        text: about.view.description
        size: 11
        color: Theme.gray
    }
    Label {
        width: parent.width
        wrapMode: Text.Wrap
        topPadding: 4
        text: about.view.copyright
        size: 10
        color: Theme.at(Theme.gray, 0.7)
    }
}
