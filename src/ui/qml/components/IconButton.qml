// SPDX-License-Identifier: MIT
import QtQuick

// A round button with a symbol alone; `text` is what a screen reader says. Drawn `diameter` wide, touched wider.
Pressable {
    id: control

    required property string symbol
    property string kind: "plain"
    property string tone: "blue"
    property real diameter: 36
    property real symbolSize: kind === "plain" ? 24 : diameter * 0.5

    implicitWidth: Math.max(Theme.touch, diameter)
    implicitHeight: Math.max(Theme.touch, diameter)
    cornerRadius: diameter / 2
    focusTarget: disc

    Rectangle {
        id: disc

        anchors.centerIn: parent
        width: control.diameter
        height: control.diameter
        radius: width / 2
        color: control.kind === "solid" ? Theme.solid(control.tone)
            : control.kind === "tinted" ? Theme.tint(control.tone) : "transparent"

        PressTint {
            anchors.fill: parent
            radius: parent.radius
            over: control
        }
    }
    Symbol {
        anchors.centerIn: parent
        name: control.symbol
        size: control.symbolSize
        color: control.kind === "solid" ? Theme.onSolid : Theme.symbol(control.tone)
    }
}
