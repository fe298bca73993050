// SPDX-License-Identifier: MIT
import QtQuick

// One choice on a drum, paler the farther it is from the middle. `row`: value, text, isSelected.
Label {
    id: cell

    required property var row
    required property int index
    readonly property bool isSelected: row.isSelected
    readonly property bool isNear: ListView.isCurrentItem
    signal picked

    text: row.text
    wrapMode: Text.NoWrap
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
    size: isNear ? Theme.title3 : Theme.body
    font.weight: isNear ? Font.DemiBold : Font.Normal
    color: isNear ? Theme.text : Theme.secondary
    opacity: Math.max(0.35, 1 - Math.abs(index - ListView.view.currentIndex) * 0.25)
    Accessible.ignored: true

    TapHandler {
        onTapped: cell.picked()
    }
}
