// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick

// A soft shadow around what floats, built of a few pale frames: it looks the same in every renderer.
Item {
    id: shadow

    property real radius: Theme.radiusCard
    anchors.fill: parent

    Repeater {
        model: 10

        Rectangle {
            required property int index
            readonly property real spread: 1 + index * 1.8

            x: -spread
            y: 5 - spread
            width: shadow.width + 2 * spread
            height: shadow.height + 2 * spread
            radius: shadow.radius + spread
            color: Theme.shadow
        }
    }
}
