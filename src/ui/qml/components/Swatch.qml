// SPDX-License-Identifier: MIT
import QtQuick

// A colour to pick. The selected one carries a white ring.
Checkable {
    id: control

    required property string color
    property real diameter: 44

    implicitWidth: diameter
    implicitHeight: diameter
    cornerRadius: diameter / 2
    focusTarget: disc

    voice: Accessible.RadioButton

    Rectangle {
        id: disc

        anchors.centerIn: parent
        width: control.diameter
        height: width
        radius: width / 2
        color: control.isSelected ? Theme.solid(control.color) : Theme.fill(control.color)

        PressTint {
            anchors.fill: parent
            radius: parent.radius
            over: control
        }
    }
    Rectangle {
        anchors.centerIn: parent
        visible: control.isSelected
        width: control.diameter - 10
        height: width
        radius: width / 2
        color: "transparent"
        border.width: 3
        border.color: Theme.onSolid
    }
    Symbol {
        anchors.centerIn: parent
        visible: control.isSelected
        name: "checkmark"
        size: control.diameter * 0.42
        color: Theme.onSolid
    }
}
