import QtQuick
import Kestrovan.Parts
import Kestrovan.Ui

Sheet {
    id: gallery

    required property IntruderGallerySheetLogic view

    objectName: "intruderGallerySheet"
    isInFront: view.isInFront
    title: view.title
    boxWidth: 520
    boxHeight: 500
    onDismissed: view.close()

    component Divider: Rectangle {
        width: parent.width
        height: 1
        color: Theme.at(Theme.white, 0.12)
    }

    Column {
        id: top
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 22 }
        spacing: 12

        SheetHeader {
            width: parent.width
            symbol: "camera.fill"
            title: gallery.view.title
            closeLabel: gallery.view.closeLabel
            onClosed: gallery.view.close()
        }
        Label {
            width: parent.width
            wrapMode: Text.Wrap
            text: gallery.view.description
            size: 12
            color: Theme.gray
        }
        Divider {}
    }

    Loader {
        id: body
        anchors {
            left: parent.left; leftMargin: 22
            right: parent.right; rightMargin: 22
            top: top.bottom; topMargin: 12
            bottom: bottom.top; bottomMargin: 12
        }
        sourceComponent: gallery.view.isEmpty ? empty : photos
    }

    Column {
        id: bottom
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: 22 }
        spacing: 12

        Divider {}
        Item {
            width: parent.width
            height: folder.height

            BorderedButton {
                id: folder
                objectName: "folderButton"
                isProminent: true
                tint: Theme.cyan
                symbol: "folder.fill"
                text: gallery.view.folderLabel
                onPressed: gallery.view.openFolder()
            }
            PlainButton {
                objectName: "clearButton"
                anchors { right: parent.right; verticalCenter: parent.verticalCenter }
                visible: !gallery.view.isEmpty
                text: gallery.view.clearLabel
                size: 12
                weight: Theme.Regular
                foreground: Theme.red
                horizontalPadding: 4
                verticalPadding: 4
                radius: 4
                onPressed: gallery.view.clear()
            }
        }
    }

    Component {
        id: empty

        Item {
            Column {
                anchors.centerIn: parent
                width: parent.width
                spacing: 12

                Symbol {
                    anchors.horizontalCenter: parent.horizontalCenter
                    name: "person.crop.rectangle.badge.plus"
                    color: Theme.at(Theme.gray, 0.5)
                    size: 48
                }
                Paragraph {
                    objectName: "emptyLabel"
                    width: parent.width
                    text: gallery.view.emptyLabel
                    size: 13
                    color: Theme.gray
                }
            }
        }
    }
    Component {
        id: photos

        Item {
            GridView {
                id: grid
                objectName: "photoGrid"
                anchors.fill: parent
                clip: true
                boundsBehavior: Flickable.StopAtBounds
                activeFocusOnTab: true
                reuseItems: true
                cellWidth: Math.floor(width / 2)
                cellHeight: 187
                model: gallery.view.records
                delegate: IntruderCell {
                    width: grid.cellWidth
                    height: grid.cellHeight
                    thumbnails: gallery.view.thumbnails
                    isCurrent: grid.activeFocus && GridView.isCurrentItem
                }
                Accessible.role: Accessible.List
                Accessible.name: gallery.title
                Accessible.focusable: true
            }
            ScrollBar {
                anchors.rightMargin: -14
                area: grid
            }
        }
    }
}
