// SPDX-License-Identifier: MIT
import QtQuick

// Shows where the keyboard is: a line around its parent, `gap` away from it, or inside where that is negative.
Rectangle {
    property bool shown: false
    property real gap: 2
    property real cornerRadius: Theme.radius

    anchors.fill: parent
    anchors.margins: -gap - border.width
    visible: shown
    color: "transparent"
    border.width: 2
    border.color: Theme.focus
    radius: Math.min(height / 2, cornerRadius + gap + border.width)
    z: 10
}
