// SPDX-License-Identifier: MIT
import QtQuick

// A row that leads somewhere, which its mark tells: further into the app, or out of it.
ListRow {
    id: control

    required property string mark

    width: parent ? parent.width : implicitWidth
    interactive: true
    voice: Accessible.Link

    Symbol {
        name: control.mark
        size: Theme.body
        color: Theme.placeholder
    }
}
