import QtQuick
import Kestrovan.Parts

// A field for one line of text. `value` is what it holds elsewhere. `accept` takes what the user made of it, and may
// return what it is to be instead.
Rectangle {
    id: entry

    property string value
    property string placeholder
    property string label
    property int size: 12
    property int echoMode: TextInput.Normal
    readonly property bool isFocused: input.activeFocus

    property var accept

    signal submitted

    function show(text) {
        if (input.text === text)
            return
        const cursor = input.cursorPosition
        input.text = text
        input.cursorPosition = Math.min(cursor, text.length)
    }
    onValueChanged: show(value)

    implicitHeight: input.implicitHeight + 10
    radius: 6
    color: Theme.at(Theme.black, 0.3)
    border { width: isFocused ? 2 : 1; color: isFocused ? Theme.at(Theme.cyan, 0.8) : Theme.at(Theme.white, 0.2) }
    Accessible.ignored: true

    TextInput {
        id: input
        objectName: "input"
        anchors { fill: parent; leftMargin: 8; rightMargin: 8 }
        verticalAlignment: TextInput.AlignVCenter
        echoMode: entry.echoMode
        passwordCharacter: "•"
        color: Theme.white
        selectionColor: Theme.at(Theme.cyan, 0.5)
        font: Theme.font(entry.size, Theme.Regular, Theme.Standard)
        selectByMouse: true
        activeFocusOnTab: true
        clip: true
        Component.onCompleted: text = entry.value
        onTextEdited: {
            const accepted = entry.accept(text)
            if (accepted !== undefined)
                entry.show(accepted)
        }
        onAccepted: entry.submitted()
        Accessible.role: Accessible.EditableText
        Accessible.name: entry.label
        Accessible.description: entry.echoMode === TextInput.Password ? entry.label : "" // Qt tells no name then
        Accessible.ignored: !enabled
        Accessible.passwordEdit: entry.echoMode === TextInput.Password
    }
    Label {
        anchors { left: parent.left; right: parent.right; margins: 8; verticalCenter: parent.verticalCenter }
        visible: input.text === "" && input.preeditText === ""
        elide: Text.ElideRight
        text: entry.placeholder
        size: entry.size
        color: Theme.at(Theme.white, 0.35)
        Accessible.ignored: true
    }
}
