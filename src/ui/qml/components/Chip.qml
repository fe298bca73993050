// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts

// A filter that is on or off, in its own colour.
Checkable {
    id: control

    property string symbol: ""
    property string tone: "blue"

    implicitWidth: Math.max(Theme.touch, row.implicitWidth + 28)
    implicitHeight: Math.max(Theme.touch, row.implicitHeight)
    cornerRadius: 18
    focusTarget: capsule

    voice: Accessible.RadioButton

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
    RowLayout {
        id: row

        anchors.fill: parent
        anchors.leftMargin: 13
        anchors.rightMargin: 15
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
}
