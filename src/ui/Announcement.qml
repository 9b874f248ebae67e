import QtQuick
import Kestrovan.Ui

// Nothing to see: to those who listen, a notification that comes up.
Item {
    id: announcement

    required property AnnouncementLogic view

    objectName: "announcement"
    width: 1
    height: 1
    visible: false
    Accessible.role: Accessible.Notification
    Accessible.name: view.words

    Connections {
        target: announcement.view

        function onDue() {
            announcement.visible = false
            announcement.visible = true
        }
    }
}
