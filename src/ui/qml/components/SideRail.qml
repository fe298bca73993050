// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick

// The tabs beside a wide window's screen. `tabs` are rows with `tag`, `title` and `symbol`.
Rectangle {
    id: rail

    required property var tabs
    required property int selected
    signal picked(int tag)

    implicitWidth: 216
    implicitHeight: 700
    color: Theme.surface

    Accessible.role: Accessible.PageTabList
    Accessible.name: "Pillora"

    function move(from: int, by: int) {
        const next = repeater.itemAt(from + by) as TabItem
        next?.forceActiveFocus(Qt.TabFocusReason)
    }

    Rectangle {
        x: Theme.mirrored ? 0 : parent.width - width
        width: Theme.hairline
        height: parent.height
        color: Theme.separator
    }
    Column {
        y: 16
        x: 12
        width: parent.width - 24
        spacing: 4

        Repeater {
            id: repeater

            model: rail.tabs

            TabItem {
                required property int index

                width: parent?.width ?? 0
                height: Math.max(Theme.touch + 4, Theme.subheadline * 1.3 + 16)
                wide: true
                isSelected: row.tag === rail.selected
                onClicked: rail.picked(row.tag)
                Keys.onUpPressed: rail.move(index, -1)
                Keys.onDownPressed: rail.move(index, 1)
            }
        }
    }
}
