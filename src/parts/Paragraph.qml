import QtQuick
import Kestrovan.Parts

// A centred text on as many lines as it needs.
Label {
    property real sidePadding: 0

    leftPadding: sidePadding
    rightPadding: sidePadding
    horizontalAlignment: Text.AlignHCenter
    wrapMode: Text.Wrap
}
