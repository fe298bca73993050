// SPDX-License-Identifier: MIT
import QtQuick

// A soft shadow around what floats, built of a few pale frames: it looks the same in every renderer.
Item {
    id: shadow

    property real radius: Theme.radiusCard
    readonly property int steps: 7

    anchors.fill: parent

    Repeater {
        model: shadow.steps

        Rectangle {
            required property int index
            readonly property real spread: index * 2.2

            anchors.fill: parent
            anchors.margins: -spread
            anchors.topMargin: -spread + 3
            anchors.bottomMargin: -spread - 4
            radius: shadow.radius + spread
            color: "#000000"
            opacity: Theme.dark ? 0.06 : 0.014
        }
    }
}
