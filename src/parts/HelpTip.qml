import QtQuick
import Kestrovan.Parts

// A word on what `target` does, beside it and inside its window, over everything else.
Rectangle {
    id: tip

    required property Item target
    property alias text: label.text
    readonly property Item stage: target.Window.contentItem

    function place() {
        const below = target.mapToItem(stage, target.width / 2, target.height + 6)
        const fitsBelow = below.y + height <= stage.height
        x = Math.max(4, Math.min(stage.width - width - 4, below.x - width / 2))
        y = fitsBelow ? below.y : target.mapToItem(stage, 0, -6).y - height
    }

    parent: stage
    z: 1000
    width: label.implicitWidth + 16
    height: label.implicitHeight + 8
    radius: 5
    color: "#2c2f38"
    border { width: 1; color: Theme.at(Theme.white, 0.2) }
    onWidthChanged: place()
    Component.onCompleted: place()

    Label {
        id: label
        anchors.centerIn: parent
        size: 11
        Accessible.ignored: true
    }
}
