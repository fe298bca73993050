// SPDX-License-Identifier: MIT
import QtQuick

// A switch. It shows `isOn` and asks for another value; it never changes by itself.
Checkable {
    id: control

    required property bool isOn
    signal toggled(bool isOn)

    implicitWidth: 52
    implicitHeight: Theme.touch
    cornerRadius: 16
    focusTarget: track

    isSelected: isOn
    voice: Accessible.CheckBox
    onClicked: toggled(!isOn)

    Rectangle {
        id: track

        anchors.centerIn: parent
        width: 52
        height: 32
        radius: 16
        color: control.isOn ? Theme.solid("green") : Theme.field
        border.width: control.isOn ? 0 : 1.5
        border.color: Theme.outline

        Behavior on color {
            ColorAnimation { duration: Theme.quick }
        }

        Rectangle {
            id: knob

            readonly property bool atEnd: control.isOn !== Theme.mirrored
            readonly property real rest: control.isOn ? 26 : 20

            width: control.down ? rest + 3 : rest
            height: rest
            radius: height / 2
            y: (track.height - height) / 2
            x: atEnd ? track.width - width - y : y
            color: control.isOn ? Theme.onSolid : Theme.outline

            Behavior on x {
                NumberAnimation { duration: Theme.quick; easing.type: Easing.OutCubic }
            }
            Behavior on width {
                NumberAnimation { duration: Theme.quick }
            }
        }
        PressTint {
            anchors.fill: parent
            radius: parent.radius
            over: control
        }
    }
}
