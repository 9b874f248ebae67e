import QtQuick
import Kestrovan.Parts
import Kestrovan.Ui

Item {
    id: header

    required property HeaderSectionLogic view

    component RoundButton: PlainButton {
        size: 11
        symbolSize: 14
        foreground: Theme.gray
        horizontalPadding: 8
        verticalPadding: 8
        radius: width / 2
        color: Theme.at(Theme.white, 0.08)
    }

    implicitHeight: logo.height

    AppLogoView {
        id: logo
        size: 42
    }
    Column {
        anchors {
            left: logo.right; leftMargin: 12
            right: buttons.left; rightMargin: 12
            verticalCenter: parent.verticalCenter
        }
        spacing: 2

        Label {
            objectName: "appName"
            text: header.view.appName
            size: 18
            weight: Theme.Bold
        }
        Label {
            objectName: "appSubtitle"
            width: parent.width
            wrapMode: Text.Wrap
            text: header.view.appSubtitle
            size: 11
            weight: Theme.Medium
            color: Theme.gray
        }
    }
    Row {
        id: buttons
        anchors { right: parent.right; verticalCenter: parent.verticalCenter }
        spacing: 12

        PlainButton {
            objectName: "languageButton"
            anchors.verticalCenter: parent.verticalCenter
            text: header.view.languageLabel
            help: header.view.languageHelp
            size: 11
            weight: Theme.Bold
            horizontalPadding: 10
            verticalPadding: 6
            radius: height / 2
            color: Theme.at(Theme.white, 0.12)
            onPressed: header.view.switchLanguage()
        }
        RoundButton {
            objectName: "aboutButton"
            symbol: "info.circle"
            help: header.view.aboutHelp
            onPressed: header.view.showAbout()
        }
        RoundButton {
            objectName: "settingsButton"
            symbol: "gearshape.fill"
            help: header.view.settingsHelp
            onPressed: header.view.showSettings()
        }
    }
}
