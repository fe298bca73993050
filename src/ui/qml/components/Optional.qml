// SPDX-License-Identifier: MIT
import QtQuick

// Makes what is put inside while `when` holds, as a child of this one's parent. Deliberate: not a Loader, because that
// of Qt 6.4 refuses components of a file that binds its components.
Repeater {
    property bool when: true

    model: when ? 1 : 0
}
