// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Templates as T

// A page that scrolls: a column of what is put inside, no wider than reads well, in the middle of a wide window. What
// gets the keyboard's focus is brought into sight.
Flickable {
    id: area

    default property alias content: column.data
    property alias spacing: column.spacing
    property real margin: Theme.padding
    property real topSpace: 8
    property real bottomSpace: 24

    contentWidth: width
    contentHeight: column.y + column.height + bottomSpace
    clip: true
    boundsBehavior: Flickable.DragAndOvershootBounds
    flickableDirection: Flickable.VerticalFlick
    interactive: contentHeight > height

    T.ScrollBar.vertical: ScrollIndicator {}

    function reveal(item: Item) {
        for (let up = item; up; up = up.parent) {
            if (up === column) {
                const top = item.mapToItem(area.contentItem, 0, 0).y
                const space = 20
                if (top - space < contentY)
                    contentY = Math.max(0, top - space)
                else if (top + item.height + space > contentY + height)
                    contentY = Math.min(Math.max(0, contentHeight - height), top + item.height + space - height)
                return
            }
        }
    }

    Connections {
        target: area.Window.window
        function onActiveFocusItemChanged() {
            if (area.Window.window.activeFocusItem)
                area.reveal(area.Window.window.activeFocusItem)
        }
    }

    Column {
        id: column

        x: (area.width - width) / 2
        y: area.topSpace
        width: Math.min(area.width - 2 * area.margin, Theme.readableWidth)
        spacing: 24
    }
}
