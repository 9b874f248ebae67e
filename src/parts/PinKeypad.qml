import QtQuick
import Kestrovan.Parts

// Twelve keys for the PIN. While it is locked it is dimmed and does nothing.
Grid {
    id: keypad

    property bool isLocked: false
    property real keyWidth
    property real keyHeight
    property int size
    property real digitOpacity
    property real commandOpacity
    property real corners

    signal keyPressed(string key)

    columns: 3
    spacing: 6
    enabled: !isLocked
    opacity: isLocked ? 0.4 : 1
    Accessible.role: Accessible.Grouping
    Accessible.name: "PIN"
    Accessible.ignored: !enabled

    Repeater {
        model: ["1", "2", "3", "4", "5", "6", "7", "8", "9", "C", "0", "⌫"]

        PlainButton {
            required property string modelData
            readonly property bool isCommand: modelData === "C" || modelData === "⌫"

            objectName: "key" + modelData
            width: keypad.keyWidth
            height: keypad.keyHeight
            radius: keypad.corners
            color: Theme.at(Theme.white, isCommand ? keypad.commandOpacity : keypad.digitOpacity)
            text: modelData
            size: keypad.size
            onPressed: keypad.keyPressed(modelData)
        }
    }
}
