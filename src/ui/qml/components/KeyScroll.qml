// SPDX-License-Identifier: MIT
import QtQuick

// What the keyboard does to a page or a list that scrolls: what it gives the focus to comes into sight, and keys that
// nothing inside wants scroll it. What is pressed stays under the finger.
Connections {
    id: aid

    required property Flickable area
    readonly property real top: area.originY - area.topMargin
    readonly property real end: area.originY + area.contentHeight + area.bottomMargin - area.height

    function scroll(to: real) {
        area.contentY = Math.max(top, Math.min(to, end))
    }
    function take(event: KeyEvent) {
        const page = 0.9 * area.height
        const to = new Map([[Qt.Key_Up, area.contentY - Theme.touch], [Qt.Key_Down, area.contentY + Theme.touch],
            [Qt.Key_PageUp, area.contentY - page], [Qt.Key_PageDown, area.contentY + page], [Qt.Key_Home, top],
            [Qt.Key_End, end]]).get(event.key)
        event.accepted = to !== undefined
        if (event.accepted)
            scroll(to)
    }
    function reveal(item: Item) {
        const space = 20
        let up = item
        while (up && up !== area.contentItem)
            up = up.parent
        if (!up)
            return
        const place = item.mapToItem(area.contentItem, 0, 0).y
        if (place - space < area.contentY)
            scroll(place - space)
        else if (place + item.height + space > area.contentY + area.height)
            scroll(place + item.height + space - area.height)
    }

    target: area?.Window.window ?? null
    function onActiveFocusItemChanged() {
        const item = area?.Window.window?.activeFocusItem
        if (item?.activeFocusOnTab && (item.visualFocus ?? true))
            reveal(item)
    }
}
