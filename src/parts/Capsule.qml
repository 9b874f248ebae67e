import QtQuick

// A row of things on a background with round ends, or with the corners that it is given.
Rectangle {
    id: capsule

    default property alias content: row.data
    property alias spacing: row.spacing
    property real horizontalPadding
    property real verticalPadding

    implicitWidth: row.implicitWidth + 2 * horizontalPadding
    implicitHeight: row.implicitHeight + 2 * verticalPadding
    radius: height / 2

    Row {
        id: row
        anchors.centerIn: parent
        spacing: 6
    }
}
