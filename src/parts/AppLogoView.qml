import QtQuick
import Kestrovan.Parts

Item {
    id: logo

    property real size
    property color shadowColor: Theme.at(Theme.blue, 0.4)
    property real shadowBlur: 6

    implicitWidth: size
    implicitHeight: size
    Accessible.role: Accessible.Graphic
    Accessible.name: "Kestrovan"
    Accessible.ignored: !enabled

    SoftShadow {
        anchors { fill: parent; margins: -logo.shadowBlur }
        cornerRadius: logo.size * 0.22
        blur: logo.shadowBlur
        color: logo.shadowColor
    }
    LogoPicture {
        anchors.fill: parent
    }
}
