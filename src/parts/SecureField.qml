import QtQuick
import Kestrovan.Parts

// A masked text field. `value` is what it holds elsewhere; `edited` says what the user made of it.
Rectangle {
    id: field

    property string value
    property string placeholder
    property string label
    property int size: 22
    property int weight: Theme.Bold
    property real padding: 8
    property bool showsFocus: true // false where the edge does that
    readonly property bool isFocused: input.activeFocus

    signal edited(string text)
    signal submitted

    function takeFocus() {
        input.forceActiveFocus()
    }
    onValueChanged: if (input.text !== value) input.text = value

    implicitHeight: input.implicitHeight + 2 * padding
    Accessible.ignored: true

    TextInput {
        id: input
        objectName: "input"
        anchors { fill: parent; leftMargin: 10; rightMargin: 10 }
        horizontalAlignment: TextInput.AlignHCenter
        verticalAlignment: TextInput.AlignVCenter
        echoMode: TextInput.Password
        passwordCharacter: "•"
        inputMethodHints: Qt.ImhSensitiveData | Qt.ImhNoPredictiveText | Qt.ImhDigitsOnly
        color: Theme.white
        selectionColor: Theme.at(Theme.cyan, 0.5)
        font: Theme.font(field.size, field.weight, Theme.Standard)
        activeFocusOnTab: true
        clip: true
        text: field.value
        // Not across the placeholder, which stands where the first dot will.
        cursorDelegate: Rectangle {
            visible: input.activeFocus && input.text !== ""
            width: 1
            color: Theme.white
        }
        onTextEdited: field.edited(text)
        onAccepted: field.submitted()
        Accessible.role: Accessible.EditableText
        Accessible.passwordEdit: true
        Accessible.name: field.label
        Accessible.description: field.label // Qt tells no name of a password field
        Accessible.ignored: !enabled
    }
    Label {
        anchors.centerIn: parent
        visible: input.text === ""
        text: field.placeholder
        size: field.size
        weight: field.weight
        color: Theme.at(Theme.white, 0.3)
        Accessible.ignored: true
    }
    FocusRing {
        shown: field.isFocused && field.showsFocus
        corners: field.radius
    }
}
