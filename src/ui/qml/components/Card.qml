// SPDX-License-Identifier: MIT
import QtQuick

// A soft surface for what belongs together. Its height is its content's.
Rectangle {
    id: card

    default property alias content: inside.data
    property real padding: Theme.padding

    implicitWidth: 328
    implicitHeight: inside.childrenRect.height + 2 * padding
    radius: Theme.radiusCard
    color: Theme.surface
    border.width: Theme.dark ? 0 : 1
    border.color: Theme.separator

    Item {
        id: inside

        x: card.padding
        y: card.padding
        width: card.width - 2 * card.padding
        height: childrenRect.height
    }
}
