import QtQuick
import Kestrovan.Parts
import Kestrovan.Ui

// One photo of the gallery: the two cells of a row share the space between them, and each has half of it.
Item {
    id: cell

    required property int index
    required property string imagePath
    required property string triggerReason
    required property string time
    required property ThumbnailLoader thumbnails
    property bool isCurrent

    readonly property real gap: 14
    readonly property bool isLeft: index % 2 === 0

    Accessible.role: Accessible.ListItem
    Accessible.name: triggerReason + ", " + time

    Rectangle {
        anchors {
            fill: parent
            leftMargin: cell.isLeft ? 0 : cell.gap / 2
            rightMargin: cell.isLeft ? cell.gap / 2 : 0
            bottomMargin: cell.gap
        }
        radius: 10
        color: Theme.at(Theme.white, 0.05)
        border { width: cell.isCurrent ? 2 : 0; color: Theme.at(Theme.cyan, 0.8) }

        Column {
            anchors { fill: parent; margins: 8 }
            spacing: 5

            Rectangle {
                width: parent.width
                height: 120
                radius: 8
                color: Theme.at(Theme.white, photo.isShown ? 0 : 0.1)

                Thumbnail {
                    id: photo
                    objectName: "photo"
                    anchors.fill: parent
                    loader: cell.thumbnails
                    path: cell.imagePath
                    cornerRadius: 8
                }
            }
            Label {
                objectName: "photoReason"
                width: parent.width
                elide: Text.ElideRight
                text: cell.triggerReason
                size: 11
                weight: Theme.Bold
                color: Theme.yellow
                Accessible.ignored: true
            }
            Label {
                objectName: "photoTime"
                text: cell.time
                size: 9
                color: Theme.gray
                Accessible.ignored: true
            }
        }
    }
}
