// SPDX-License-Identifier: MIT
import QtQuick

// The veil over a button that is pointed at or pressed.
Rectangle {
    required property Pressable over

    color: over.down ? Theme.press : over.hovered ? Theme.hover : "transparent"

    Behavior on color {
        ColorAnimation { duration: Theme.quick }
    }
}
