// SPDX-License-Identifier: MIT
import QtQuick

// A number with minus and plus. `row`: label (which holds the value), value, canDecrement, canIncrement.
ListRow {
    id: control

    required property var row
    signal decremented
    signal incremented

    width: parent ? parent.width : implicitWidth
    text: row.label
    silent: true
    stackable: true

    Stepper {
        anchors.right: parent.right
        opacity: 1
        name: control.row.label
        value: control.row.value
        canDecrement: control.row.canDecrement
        canIncrement: control.row.canIncrement
        onDecremented: control.decremented()
        onIncremented: control.incremented()
    }
}
