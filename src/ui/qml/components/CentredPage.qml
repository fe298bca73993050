// SPDX-License-Identifier: MIT
import QtQuick

// One item by itself in the middle of a page. It scrolls where the page is too low for it.
Flickable {
    id: page

    default property alias content: place.data

    contentHeight: Math.max(height, (place.children[0]?.height ?? 0) + 2 * Theme.padding)
    interactive: contentHeight > height
    boundsBehavior: Flickable.StopAtBounds

    KeyScroll {
        area: page
    }
    Item {
        id: place

        width: page.width
        height: page.contentHeight
    }
}
