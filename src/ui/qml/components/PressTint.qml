// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Templates as T

// The veil over a button that is pointed at or pressed.
Rectangle {
    required property T.AbstractButton over

    color: !over.hoverEnabled ? "transparent" : over.down ? Theme.press : over.hovered && over.enabled ? Theme.hover : "transparent"

    Behavior on color {
        ColorAnimation { duration: Theme.quick }
    }
}
