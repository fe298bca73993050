// SPDX-License-Identifier: MIT
import QtQuick

// A button that is on or off, and asks for the other.
Pressable {
    required property bool isSelected

    Accessible.checkable: true
    Accessible.checked: isSelected
    Accessible.onToggleAction: activate()
}
