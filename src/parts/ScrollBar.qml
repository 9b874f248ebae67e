import QtQuick
import Kestrovan.Parts

// Shows how far something tall is scrolled, and can be dragged. It stands at the right edge of its parent.
Rectangle {
    id: bar

    required property Flickable area

    visible: area.visibleArea.heightRatio < 1
    anchors { right: parent.right; rightMargin: 3 }
    width: 6
    radius: 3
    height: Math.max(24, area.height * area.visibleArea.heightRatio)
    y: area.y + (area.height - height) * area.visibleArea.yPosition / Math.max(0.001, 1 - area.visibleArea.heightRatio)
    color: Theme.at(Theme.white, drag.containsMouse || drag.pressed ? 0.5 : 0.25)

    MouseArea {
        id: drag

        property real grip

        anchors { fill: parent; leftMargin: -3; rightMargin: -3 }
        hoverEnabled: true
        preventStealing: true
        onPressed: mouse => grip = mouse.y
        onPositionChanged: mouse => {
            if (!pressed)
                return
            const way = mapToItem(bar.parent, 0, mouse.y - grip).y - bar.area.y
            const fraction = Math.max(0, Math.min(1, way / (bar.area.height - bar.height)))
            bar.area.contentY = bar.area.originY + fraction * (bar.area.contentHeight - bar.area.height)
        }
    }
}
