// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick

// The tabs at the foot of a narrow window. `tabs` are rows with `tag`, `title` and `symbol`.
Rectangle {
    id: bar

    required property var tabs
    required property int selected
    signal picked(int tag)

    implicitWidth: 360
    implicitHeight: 62
    color: Theme.surface

    Accessible.role: Accessible.PageTabList
    Accessible.name: "Pillora"

    function move(from: int, by: int) {
        const next = repeater.itemAt(from + by) as TabItem
        next?.forceActiveFocus(Qt.TabFocusReason)
    }

    Rectangle {
        width: parent.width
        height: Theme.hairline
        color: Theme.separator
    }
    Row {
        id: items

        x: 4
        width: parent.width - 8
        height: parent.height
        LayoutMirroring.enabled: Theme.mirrored

        Repeater {
            id: repeater

            model: bar.tabs

            TabItem {
                required property int index

                width: items.width / repeater.count
                height: items.height
                isSelected: row.tag === bar.selected
                onClicked: bar.picked(row.tag)
                Keys.onLeftPressed: bar.move(index, Theme.mirrored ? 1 : -1)
                Keys.onRightPressed: bar.move(index, Theme.mirrored ? -1 : 1)
            }
        }
    }
}
