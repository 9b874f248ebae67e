import QtQuick
import Kestrovan.Parts
import Kestrovan.Ui

Item {
    id: window

    required property ContentViewLogic view

    width: 530
    height: 690
    focus: true

    // Reads its file when it is first shown: the program's start does not wait for it.
    component LateLoader: Loader {
        required property QtObject view
        required property bool isShown
        required property url file

        anchors.fill: parent
        onIsShownChanged: {
            if (isShown)
                setSource(file, {"view": view})
            else
                source = ""
        }
    }

    Binding {
        target: window.view
        property: "isVisible"
        value: window.Window.visibility !== Window.Hidden && window.Window.visibility !== Window.Minimized
    }
    Shortcut {
        sequences: [StandardKey.Quit]
        context: Qt.ApplicationShortcut
        onActivated: window.view.quit()
    }

    DiagonalGradient {
        anchors.fill: parent
        from: Qt.rgba(0.08, 0.10, 0.16, 1)
        to: Qt.rgba(0.04, 0.05, 0.08, 1)
    }
    MouseArea {
        anchors.fill: parent
        onPositionChanged: if (pressed) window.Window.window.startSystemMove()
    }

    FocusScope {
        id: content

        anchors { fill: parent; margins: 22 }
        enabled: window.view.isUncovered
        focus: window.view.isUncovered

        Column {
            anchors { left: parent.left; right: parent.right; top: parent.top }
            spacing: 18

            HeaderSection {
                width: parent.width
                view: window.view.header
            }
            Rectangle {
                width: parent.width
                height: 1
                color: Theme.at(Theme.white, 0.1)
            }
            SensorStatusSection {
                width: parent.width
                view: window.view.sensors
            }
            MainGuardCard {
                width: parent.width
                view: window.view.card
            }
        }
        FooterSection {
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
            view: window.view.footer
        }
    }

    FocusScope {
        anchors.fill: parent
        enabled: !window.view.alarm.isShown
        focus: !window.view.isUncovered && !window.view.alarm.isShown

        component SheetLoader: LateLoader {
            required property SheetLogic sheet

            view: sheet
            isShown: sheet.isShown
            focus: sheet.isInFront
            z: sheet.layer
        }

        SheetLoader {
            sheet: window.view.settings
            file: Qt.resolvedUrl("SettingsSheet.qml")
        }
        SheetLoader {
            sheet: window.view.about
            file: Qt.resolvedUrl("AboutModalSheet.qml")
        }
        SheetLoader {
            sheet: window.view.gallery
            file: Qt.resolvedUrl("IntruderGallerySheet.qml")
        }
        SheetLoader {
            sheet: window.view.update
            file: Qt.resolvedUrl("UpdateModalSheet.qml")
        }
    }

    LateLoader {
        view: window.view.alarm
        isShown: window.view.alarm.isShown
        focus: window.view.alarm.isShown
        file: Qt.resolvedUrl("AlarmTriggeredOverlay.qml")
    }
    Announcement {
        view: window.view.announcement
    }
}
