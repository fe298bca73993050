// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Templates as T

// A card in the middle of the window, over everything else. What is higher than the window scrolls.
Modal {
    id: card

    default property alias rows: column.data

    spacing: 8
    x: (roomWide - width) / 2
    y: (roomHigh - height) / 2
    height: Math.min(column.height + topPadding + bottomPadding, roomHigh - 32)

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.quick }
        NumberAnimation { property: "scale"; from: 1.06; to: 1; duration: Theme.quick; easing.type: Easing.OutCubic }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.quick }
    }

    background: Rectangle {
        radius: Theme.radiusSheet
        color: Theme.raised
        border.width: Theme.dark ? Theme.hairline : 0
        border.color: Theme.separator

        Shadow {
            z: -1
            radius: parent.radius
        }
    }

    content: Flickable {
        id: area

        anchors.fill: parent
        contentHeight: column.height
        interactive: contentHeight > height
        clip: interactive
        boundsBehavior: Flickable.StopAtBounds

        T.ScrollBar.vertical: ScrollIndicator {}

        KeyScroll {
            area: area
        }
        Column {
            id: column

            width: card.availableWidth
            spacing: card.spacing
        }
    }
}
