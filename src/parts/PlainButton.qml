import QtQuick
import Kestrovan.Parts

// A button that is nothing but its symbol and its text on a colour.
Rectangle {
    id: button

    property string text
    property string help
    property string symbol
    property int size: 13
    property int weight: Theme.Bold
    property color foreground: Theme.white
    property color symbolColor: foreground
    property real symbolSize: Math.round(size * 1.25)
    property real spacing: 6
    property real horizontalPadding: 12
    property real verticalPadding: 6
    property bool isUnderlined: false
    property bool isUsable: true // while it is not, it is dimmed

    signal pressed

    implicitWidth: row.implicitWidth + 2 * horizontalPadding
    implicitHeight: row.implicitHeight + 2 * verticalPadding
    color: "transparent"
    enabled: isUsable
    opacity: !isUsable ? 0.4 : mouse.pressed && mouse.containsMouse ? 0.7 : 1
    activeFocusOnTab: true
    Accessible.role: Accessible.Button
    Accessible.name: text !== "" ? text : help
    Accessible.description: help
    Accessible.focusable: true
    Accessible.ignored: isUsable && !enabled
    Accessible.onPressAction: if (button.enabled) button.pressed()
    Keys.onSpacePressed: button.pressed()
    Keys.onReturnPressed: button.pressed()
    Keys.onEnterPressed: button.pressed()

    Row {
        id: row
        anchors.centerIn: parent
        spacing: button.spacing

        Symbol {
            visible: button.symbol !== ""
            name: button.symbol
            color: button.symbolColor
            size: button.symbolSize
            anchors.verticalCenter: parent.verticalCenter
        }
        Label {
            visible: button.text !== ""
            text: button.text
            size: button.size
            weight: button.weight
            color: button.foreground
            isUnderlined: button.isUnderlined
            anchors.verticalCenter: parent.verticalCenter
            Accessible.ignored: true
        }
    }
    FocusRing {
        shown: button.activeFocus
        corners: button.radius
    }
    Timer {
        id: rest
        running: mouse.containsMouse && !mouse.pressed && button.help !== ""
        interval: 700
        onTriggered: tip.active = true
        onRunningChanged: if (!running && !mouse.containsMouse) tip.active = false
    }
    Loader {
        id: tip
        active: false
        sourceComponent: HelpTip {
            target: button
            text: button.help
        }
    }
    MouseArea {
        id: mouse
        anchors.fill: parent
        hoverEnabled: true
        cursorShape: Qt.PointingHandCursor
        onClicked: button.pressed()
    }
}
