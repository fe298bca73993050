// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick

// A drum of choices that turns to the selected one. `cells` are rows with `value`, `text` and `isSelected`. Turning it,
// pressing a choice or Up and Down asks for another; showing one never does.
FocusScope {
    id: wheel

    required property var cells
    required property string name
    readonly property int value: (list.currentItem as WheelCell)?.row.value ?? 0
    readonly property real pitch: Math.max(40, Theme.title3 * 1.7)
    // The index that was asked for and is not yet the selected one.
    property int asked: -1
    signal picked(int value)

    implicitWidth: 92
    implicitHeight: pitch * 5
    activeFocusOnTab: true

    Accessible.role: Accessible.SpinBox
    Accessible.name: name + ", " + (list.currentItem?.text ?? "")
    Accessible.focusable: true
    Accessible.onIncreaseAction: step(1)
    Accessible.onDecreaseAction: step(-1)

    function step(by: int) {
        const from = asked >= 0 ? asked : list.selectedIndex()
        choose((from + by + list.count) % list.count)
    }
    function rowAt(index: int): var {
        return cells.data(cells.index(index, 0), Qt.UserRole)
    }
    function choose(index: int) {
        asked = index
        list.currentIndex = index
        picked(rowAt(index).value)
    }

    Keys.onUpPressed: step(-1)
    Keys.onDownPressed: step(1)

    Rectangle {
        anchors.centerIn: parent
        width: parent.width
        height: wheel.pitch
        radius: Theme.radius
        color: Theme.field

        FocusRing {
            shown: wheel.activeFocus
            gap: 0
        }
    }
    ListView {
        id: list

        function settle(index: int) {
            currentIndex = index
            positionViewAtIndex(index, ListView.Center)
        }

        // Of the rows themselves: their delegates may not have been made yet.
        function selectedIndex(): int {
            for (let i = 0; i < count; ++i) {
                if (wheel.rowAt(i).isSelected)
                    return i
            }
            return currentIndex
        }
        // A list that is not yet in a window forgets where it was put.
        function settleOnSelected() {
            if (!moving && wheel.asked < 0)
                settle(selectedIndex())
        }

        onVisibleChanged: Qt.callLater(settleOnSelected)  // qmllint disable type
        onCurrentIndexChanged: Qt.callLater(settleOnSelected)  // qmllint disable type

        anchors.fill: parent
        clip: true
        model: wheel.cells
        delegate: WheelCell {
            width: list.width
            height: wheel.pitch
            onPicked: wheel.choose(index)
            onIsSelectedChanged: if (isSelected) {
                wheel.asked = -1
                list.currentIndex = index
            }
            Component.onCompleted: if (isSelected)
                Qt.callLater(list.settle, index)  // qmllint disable type
        }
        cacheBuffer: wheel.pitch * 80
        snapMode: ListView.SnapToItem
        highlightRangeMode: ListView.StrictlyEnforceRange
        preferredHighlightBegin: (height - wheel.pitch) / 2
        preferredHighlightEnd: (height + wheel.pitch) / 2
        highlightMoveDuration: Theme.calm
        boundsBehavior: Flickable.StopAtBounds

        onMovementEnded: {
            const choice = currentItem as WheelCell
            if (choice && !choice.isSelected)
                wheel.picked(choice.row.value)
        }
    }
}
