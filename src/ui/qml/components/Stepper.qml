// SPDX-License-Identifier: MIT
import QtQuick
import Pillora

// Minus and plus. It only says which was pressed: the next value is the content's business. Up and Down step too.
FocusItem {
    id: control

    required property string name
    required property bool canDecrement
    required property bool canIncrement
    property int value: 0
    signal decremented
    signal incremented

    implicitWidth: 89
    implicitHeight: Theme.touch
    activeFocusOnTab: true
    opacity: enabled ? 1 : Theme.disabledOpacity

    function step(up: bool) {
        if (up ? canIncrement : canDecrement)
            up ? incremented() : decremented()
    }

    Keys.onUpPressed: step(true)
    Keys.onDownPressed: step(false)
    Keys.onPressed: event => {
        const up = event.key === Qt.Key_Plus || event.key === (Theme.mirrored ? Qt.Key_Left : Qt.Key_Right)
        const down = event.key === Qt.Key_Minus || event.key === (Theme.mirrored ? Qt.Key_Right : Qt.Key_Left)
        if (up || down)
            step(up)
        event.accepted = up || down
    }

    Accessible.role: Accessible.SpinBox
    Accessible.name: name
    Accessible.focusable: true
    Accessible.onIncreaseAction: step(true)
    Accessible.onDecreaseAction: step(false)

    Rectangle {
        y: (parent.height - height) / 2
        height: 36
        width: parent.width
        radius: 10
        color: Theme.field

        FocusRing {
            shown: control.visualFocus
            cornerRadius: parent.radius
        }
    }
    Row {
        LayoutMirroring.enabled: Theme.mirrored

        StepperHalf {
            symbol: "minus"
            dimmed: control.enabled && !enabled
            enabled: control.canDecrement
            onClicked: control.step(false)
        }
        Item {
            width: 1
            height: control.height

            Rectangle {
                anchors.centerIn: parent
                width: 1
                height: 18
                color: Theme.outline
                opacity: 0.5
            }
        }
        StepperHalf {
            symbol: "plus"
            dimmed: control.enabled && !enabled
            enabled: control.canIncrement
            onClicked: control.step(true)
        }
    }
}
