// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts

// A filter that is on or off, in its own colour.
Pressable {
    id: control

    required property bool isSelected
    property string symbol: ""
    property string tone: "blue"

    leftPadding: 13
    rightPadding: 15
    cornerRadius: 18
    focusTarget: capsule

    voice: Accessible.RadioButton
    Accessible.checkable: true
    Accessible.checked: isSelected

    contentItem: RowLayout {
        spacing: 6

        Symbol {
            visible: control.symbol !== ""
            name: control.symbol
            size: Theme.subheadline * 1.15
            color: control.isSelected ? Theme.onSolid : Theme.symbol(control.tone)
        }
        Label {
            text: control.text
            wrapMode: Text.NoWrap
            size: Theme.subheadline
            font.weight: Font.DemiBold
            color: control.isSelected ? Theme.onSolid : Theme.text
            Accessible.ignored: true
        }
    }
    background: Item {
        Rectangle {
            id: capsule

            y: 4
            width: parent.width
            height: parent.height - 8
            radius: height / 2
            color: control.isSelected ? Theme.solid(control.tone) : Theme.surface
            border.width: control.isSelected ? 0 : 1
            border.color: Theme.separator

            PressTint {
                anchors.fill: parent
                radius: parent.radius
                over: control
            }
        }
    }
}
