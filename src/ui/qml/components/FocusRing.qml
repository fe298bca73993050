// SPDX-License-Identifier: MIT
import QtQuick

// Shows where the keyboard is. Fills its parent, a little larger than it.
Rectangle {
    property bool shown: false
    property real gap: 2

    anchors.fill: parent
    anchors.margins: -gap - border.width
    visible: shown
    color: "transparent"
    border.width: 2
    border.color: Theme.focus
    radius: Theme.radius + gap
    z: 10
}
