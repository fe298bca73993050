// SPDX-License-Identifier: MIT
import QtQuick

// A symbol to pick: the selected one in the given colour, the others in grey.
Pressable {
    id: control

    required property string symbol
    required property bool isSelected
    property string tone: "blue"
    property real side: 44

    implicitWidth: side
    implicitHeight: side
    cornerRadius: Theme.radius
    focusTarget: cell

    voice: Accessible.RadioButton
    Accessible.checkable: true
    Accessible.checked: isSelected

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            name: control.symbol
            size: control.side * 0.56
            color: Theme.symbol(control.isSelected ? control.tone : "grey")
        }
    }
    background: Item {
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
    }
}
