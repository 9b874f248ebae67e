import QtQuick
import Kestrovan.Parts

// A text as it stands: nothing in it is markup.
Text {
    property int size
    property int weight: Theme.Regular
    property int design: Theme.Standard
    property bool isUnderlined: false

    textFormat: Text.PlainText
    color: Theme.white
    font: Theme.font(size, weight, design, isUnderlined)
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: !enabled // as it is under a sheet
}
