// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Templates as T

// A page that scrolls: a column of what is put inside, no wider than reads well, in the middle of a wide window. What
// gets the keyboard's focus is brought into sight.
Flickable {
    id: page

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

    Keys.onPressed: event => keys.take(event)
    // A keyboard on the screen takes some of the height.
    onHeightChanged: keys.onActiveFocusItemChanged()

    KeyScroll {
        id: keys

        area: page
    }
    Column {
        id: column

        x: (page.width - width) / 2
        y: page.topSpace
        width: Math.min(page.width - 2 * page.margin, Theme.readableWidth)
        spacing: 24
    }
}
