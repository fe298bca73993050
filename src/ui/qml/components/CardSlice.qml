// SPDX-License-Identifier: MIT
import QtQuick

// What one row of a list shows of the card that it shares with its neighbours: the whole where it is first and last.
Item {
    id: slice

    property bool first: false
    property bool last: false
    default property alias content: inside.data

    implicitHeight: inside.childrenRect.height
    clip: !first || !last

    Rectangle {
        y: slice.first ? 0 : -radius
        width: parent.width
        height: parent.height - y + (slice.last ? 0 : radius)
        radius: Theme.radiusCard
        color: Theme.surface
        border.width: Theme.dark ? 0 : 1
        border.color: Theme.separator
    }
    Item {
        id: inside

        width: parent.width
        height: childrenRect.height
    }
}
