// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Templates as T

// One side of a stepper. A press that lasts repeats. The stepper itself has the focus and the voice.
T.AbstractButton {
    id: half

    required property string symbol
    required property bool dimmed

    width: 44
    height: Theme.touch
    hoverEnabled: true
    focusPolicy: Qt.NoFocus
    autoRepeat: true
    autoRepeatDelay: 500
    autoRepeatInterval: 120
    opacity: dimmed ? 0.35 : 1
    Accessible.ignored: true

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            name: half.symbol
            size: 20
        }
    }
    background: Item {
        PressTint {
            y: (parent.height - height) / 2
            x: 2
            width: parent.width - 4
            height: 32
            radius: 8
            over: half
        }
    }
}
