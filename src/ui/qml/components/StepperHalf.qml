// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Templates as T

// One side of a stepper. A press that lasts repeats. The stepper itself has the focus and the voice.
T.AbstractButton {
    id: half

    required property string symbol

    width: 51.5
    height: Theme.touch
    hoverEnabled: true
    focusPolicy: Qt.NoFocus
    autoRepeat: true
    autoRepeatDelay: 500
    autoRepeatInterval: 120
    opacity: enabled ? 1 : 0.35
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
