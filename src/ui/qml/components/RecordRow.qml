// SPDX-License-Identifier: MIT
import QtQuick

// One dose of the past: what and when, perhaps a symbol before, and at the end whatever is put inside, or below where
// that would leave the words too little room. Lists make and drop many of these, so it is made of few items.
Item {
    id: control

    required property string text
    property string detail: ""
    property string symbol: ""
    property color symbolColor: Theme.secondary
    property string spoken: text  // what the row says as a whole
    property bool separated: !Positioner.isFirstItem
    default property alias trailing: slot.data
    readonly property real beginning: Theme.padding + (mark.visible ? mark.width + 12 : 0)
    readonly property real room: width - beginning - Theme.padding
    readonly property bool stacked: room - slot.width - 8 < 5.5 * Theme.body

    // From the left, or in a mirrored window from the right.
    function placed(x: real, breadth: real): real {
        return Theme.mirrored ? width - x - breadth : x
    }

    width: parent ? parent.width : 328
    implicitHeight: Math.max(Theme.rowHeight,
        16 + (stacked ? words.height + 4 + slot.height : Math.max(words.height, slot.height)))
    Accessible.role: Accessible.ListItem
    Accessible.name: spoken

    Rectangle {
        visible: control.separated
        x: Theme.padding
        width: parent.width - 2 * Theme.padding
        height: Theme.hairline
        color: Theme.separator
    }
    Symbol {
        id: mark

        visible: name !== ""
        x: control.placed(Theme.padding, width)
        y: words.y + (words.height - height) / 2
        name: control.symbol
        size: Math.max(24, Theme.body * 1.3)
        color: control.symbolColor
    }
    Column {
        id: words

        x: control.placed(control.beginning, width)
        y: control.stacked ? 8 : (control.height - height) / 2
        width: control.stacked ? control.room : control.room - slot.width - 8
        spacing: 1

        Label {
            width: parent.width
            text: control.text
            Accessible.ignored: true
        }
        Label {
            width: parent.width
            text: control.detail
            color: Theme.secondary
            size: Theme.subheadline
            Accessible.ignored: true
        }
    }
    Row {
        id: slot

        x: control.placed(control.width - Theme.padding - width, width)
        y: control.stacked ? words.y + words.height + 4 : (control.height - height) / 2
        spacing: 6
        LayoutMirroring.enabled: Theme.mirrored
    }
}
