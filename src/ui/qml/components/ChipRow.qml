// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick

// Chips in one line that scrolls sideways where they do not fit. `chips` are rows with `id`, `title`, `symbol`, `color`
// and `isSelected`. It bleeds `bleed` over its sides, so that what scrolls comes from the edge of the page.
Flickable {
    id: flick

    required property var chips
    property real bleed: Theme.padding
    signal picked(string id)

    x: -bleed
    width: (parent ? parent.width : 328) + 2 * bleed
    implicitHeight: line.height
    height: implicitHeight
    contentWidth: line.width + 2 * bleed
    onContentWidthChanged: rewind()
    onWidthChanged: rewind()
    flickableDirection: Flickable.HorizontalFlick
    boundsBehavior: Flickable.StopAtBounds

    Row {
        id: line

        x: Theme.mirrored ? Math.max(flick.bleed, flick.width - width - flick.bleed) : flick.bleed
        spacing: 8
        LayoutMirroring.enabled: Theme.mirrored

        Repeater {
            id: repeater

            model: flick.chips

            Chip {
                id: chip

                required property var row
                required property int index

                text: row.title
                symbol: row.symbol ?? ""
                tone: row.color ?? "blue"
                isSelected: row.isSelected
                onClicked: flick.picked(row.id)
                onActiveFocusChanged: if (activeFocus)
                    flick.reveal(x, x + width)
                Keys.onLeftPressed: flick.move(index, Theme.mirrored ? 1 : -1)
                Keys.onRightPressed: flick.move(index, Theme.mirrored ? -1 : 1)
            }
        }
    }

    function reveal(from: real, to: real) {
        const last = Math.min(to + 2 * bleed - width, contentWidth - width)
        contentX = Math.max(0, last, Math.min(contentX, from))
    }
    // The first chip is in sight, also where it stands on the right.
    function rewind() {
        contentX = Theme.mirrored ? Math.max(0, contentWidth - width) : 0
    }
    function move(from: int, by: int) {
        (repeater.itemAt(from + by) as Chip)?.forceActiveFocus(Qt.TabFocusReason)
    }
}
