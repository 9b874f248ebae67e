import QtQuick
import Kestrovan.Parts

// One of a few choices side by side. `index` is the one that is shown, -1 for none; `chosen` asks for another. The
// arrow keys move along it.
Rectangle {
    id: picker

    property var labels: []
    property int index: -1
    property string label

    signal chosen(int index)

    function step(by) {
        const next = index + by
        if (next >= 0 && next < labels.length)
            chosen(next)
    }

    implicitHeight: 26
    radius: 7
    color: Theme.at(Theme.white, 0.08)
    activeFocusOnTab: true
    Accessible.role: Accessible.Grouping
    Accessible.name: label
    Accessible.focusable: true
    Accessible.ignored: !enabled
    Keys.onLeftPressed: step(-1)
    Keys.onRightPressed: index < 0 ? chosen(0) : step(1)

    Row {
        anchors { fill: parent; margins: 2 }

        Repeater {
            model: picker.labels

            Rectangle {
                id: segment

                required property string modelData
                required property int index
                readonly property bool isChosen: index === picker.index

                objectName: picker.objectName + index
                width: parent.width / picker.labels.length
                height: parent.height
                radius: 5
                color: isChosen ? Theme.at(Theme.white, 0.24) : "transparent"
                Accessible.role: Accessible.RadioButton
                Accessible.name: modelData
                Accessible.checkable: true
                Accessible.checked: isChosen
                Accessible.ignored: !enabled
                Accessible.onPressAction: picker.chosen(index)
                Accessible.onToggleAction: picker.chosen(index)

                Label {
                    anchors { fill: parent; leftMargin: 4; rightMargin: 4 }
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: 8
                    text: segment.modelData
                    size: 12
                    weight: segment.isChosen ? Theme.Semibold : Theme.Regular
                    Accessible.ignored: true
                }
                MouseArea {
                    anchors.fill: parent
                    cursorShape: Qt.PointingHandCursor
                    onClicked: picker.chosen(segment.index)
                }
            }
        }
    }
    FocusRing {
        shown: picker.activeFocus
        corners: picker.radius
    }
}
