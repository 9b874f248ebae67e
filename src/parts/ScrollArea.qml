import QtQuick
import Kestrovan.Parts

// A tall content seen through a window, with a bar at its side that shows where, and can be dragged. Whatever in it
// has the keyboard is brought into sight.
Flickable {
    id: area

    readonly property real overflow: Math.max(0, contentHeight - height)

    function bringIntoSight(item) {
        const top = item.mapToItem(contentItem, 0, 0).y
        if (top - 8 < contentY)
            contentY = Math.max(0, top - 8)
        else if (top + item.height + 8 > contentY + height)
            contentY = Math.min(overflow, top + item.height + 8 - height)
    }
    function holds(item) {
        for (let ancestor = item; ancestor; ancestor = ancestor.parent)
            if (ancestor === contentItem)
                return true
        return false
    }

    clip: true
    contentWidth: width
    boundsBehavior: Flickable.StopAtBounds

    Connections {
        target: area.Window.window

        function onActiveFocusItemChanged() {
            const item = area.Window.activeFocusItem
            if (item && area.holds(item))
                area.bringIntoSight(item)
        }
    }
    ScrollBar {
        parent: area
        area: area
    }
}
