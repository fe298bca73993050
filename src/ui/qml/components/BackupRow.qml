// SPDX-License-Identifier: MIT
import QtQuick

// One backup: restores it, and swiped aside deletes it. `row`: title, detail, restore, color, remove, isEnabled.
SwipeRow {
    id: control

    required property var row
    property bool separated: !Positioner.isFirstItem
    signal restored

    width: parent ? parent.width : implicitWidth
    subject: row.title
    removable: row.isEnabled
    removeTitle: row.remove.title
    removeSymbol: row.remove.symbol

    ListRow {
        width: parent.width
        separated: control.separated
        text: control.row.title
        size: Theme.subheadline
        weight: Font.Medium
        detail: control.row.detail
        detailSize: Theme.caption

        IconButton {
            enabled: control.row.isEnabled
            symbol: control.row.restore.symbol
            tone: control.row.color
            text: control.row.restore.title + ", " + control.row.title
            longest: control.patience
            onClicked: control.restored()
            onHeld: control.openMenu()
        }
    }
}
