import QtQuick
import Kestrovan.Parts

// Twelve spokes, of which one is the brightest; `turn` says which, in degrees.
Item {
    id: spinner

    property real turn

    implicitWidth: 20
    implicitHeight: 20
    Accessible.role: Accessible.Indicator

    Repeater {
        model: 12

        Rectangle {
            required property int index

            x: spinner.width / 2 - width / 2
            width: spinner.width * 0.09
            height: spinner.height * 0.27
            radius: width / 2
            color: Theme.white
            opacity: 1 - 0.075 * ((spinner.turn / 30 - index + 24) % 12)
            transform: Rotation {
                origin { x: spinner.width * 0.045; y: spinner.height / 2 }
                angle: index * 30
            }
        }
    }
}
