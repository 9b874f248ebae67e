import QtQuick
import Kestrovan.Parts
import Kestrovan.Overlay

Column {
    id: notice

    required property FullscreenOverlayLogic view

    spacing: 14

    Item {
        anchors.horizontalCenter: parent.horizontalCenter
        width: 110
        height: 110

        // Not scaled: a circle that is drawn anew at each size keeps a smooth edge.
        Rectangle {
            objectName: "glow"
            anchors.centerIn: parent
            width: 110 * notice.view.glowScale
            height: width
            radius: width / 2
            color: Theme.cyan
            opacity: notice.view.glowOpacity
        }
        AppLogoView {
            anchors.centerIn: parent
            size: 80
            shadowColor: Theme.at(Theme.cyan, 0.8)
            shadowBlur: 14
        }
    }
    Label {
        objectName: "headline"
        width: parent.width
        text: notice.view.headline
        size: 26
        weight: Theme.Heavy
        style: Text.Raised
        styleColor: Theme.at(Theme.black, 0.8)
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
    }
    Label {
        objectName: "warning"
        width: parent.width
        leftPadding: 20
        rightPadding: 20
        text: notice.view.warning
        size: 14
        weight: Theme.Semibold
        color: Theme.at(Theme.white, 0.9)
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
    }
}
