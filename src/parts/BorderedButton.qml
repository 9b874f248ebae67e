import QtQuick
import Kestrovan.Parts

// A button with an edge; a prominent one is filled with its tint.
PlainButton {
    property color tint: Theme.white
    property bool isProminent: false

    size: 12
    weight: Theme.Regular
    horizontalPadding: 12
    verticalPadding: 5
    radius: 6
    foreground: isProminent ? Theme.at(Theme.black, 0.9) : tint
    color: isProminent ? tint : Theme.at(tint, 0.1)
    border { width: 1; color: Theme.at(tint, isProminent ? 0 : 0.25) }
}
