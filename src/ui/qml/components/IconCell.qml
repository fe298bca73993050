// SPDX-License-Identifier: MIT
import QtQuick

// A symbol to pick: the selected one in the given colour, the others in grey.
Checkable {
    id: control

    required property string symbol
    property string tone: "blue"
    property real side: 44

    implicitWidth: side
    implicitHeight: side
    focusTarget: cell

    voice: Accessible.RadioButton

    Rectangle {
        id: cell

        anchors.centerIn: parent
        width: control.side
        height: width
        radius: control.cornerRadius
        color: control.isSelected ? Theme.tint(control.tone) : Theme.field
        border.width: control.isSelected ? 2 : 0
        border.color: Theme.symbol(control.tone)

        PressTint {
            anchors.fill: parent
            radius: parent.radius
            over: control
        }
    }
    Symbol {
        anchors.centerIn: parent
        name: control.symbol
        size: control.side * 0.56
        color: Theme.symbol(control.isSelected ? control.tone : "grey")
    }
}
