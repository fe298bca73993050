// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Pillora

// A drum of choices that turns to the selected one. `cells` are rows with `value`, `text` and `isSelected`. Pulling it,
// however little, pressing a choice, Up and Down or a mouse wheel asks for another; showing one never does.
FocusItem {
    id: wheel

    required property var cells
    required property string name
    readonly property int value: (list.currentItem as WheelCell)?.row.value ?? 0
    readonly property real pitch: Math.max(40, Theme.title3 * 1.7)
    // The index that was asked for and is not yet the selected one.
    property int asked: -1
    property real speed: 0  // pixels a second, of the hand that pulls it
    signal picked(int value)

    implicitWidth: 92
    implicitHeight: pitch * 5
    activeFocusOnTab: true

    Accessible.role: Accessible.SpinBox
    Accessible.name: name + ", " + (list.currentItem?.text ?? "")
    Accessible.focusable: true
    Accessible.onIncreaseAction: step(1)
    Accessible.onDecreaseAction: step(-1)

    function rowAt(index: int): var {
        return cells.data(cells.index(index, 0), Qt.UserRole)
    }
    function wanted(): int {
        return asked >= 0 ? asked : list.selectedIndex()
    }
    function step(by: int) {
        choose((wanted() + by + list.count) % list.count)
    }
    // Turns there, and asks for it where it is not wanted already.
    function choose(index: int) {
        const isNew = index !== wanted()
        if (isNew)
            asked = rowAt(index).isSelected ? -1 : index
        list.turnTo(index)
        if (isNew)
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
            shown: wheel.visualFocus
            gap: 0
        }
    }
    ListView {
        id: list

        property bool isSettled: false

        // Where the view stands when a choice is in the middle.
        function placeOf(index: int): real {
            return index * wheel.pitch - preferredHighlightBegin
        }
        function settle(index: int) {
            positionViewAtIndex(index, ListView.Center)
            isSettled = true
        }
        function turnTo(index: int) {
            if (!isSettled)
                return
            turning.stop()
            turning.to = placeOf(index)
            if (contentY !== turning.to)
                turning.start()
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
            if (!hand.active && !turning.running && wheel.asked < 0)
                settle(selectedIndex())
        }

        onVisibleChanged: later.restart()
        onCurrentIndexChanged: later.restart()

        anchors.fill: parent
        clip: true
        interactive: false
        model: wheel.cells
        delegate: WheelCell {
            width: list.width
            height: wheel.pitch
            onPicked: wheel.choose(index)
            onIsSelectedChanged: if (isSelected) {
                wheel.asked = -1
                if (!hand.active)
                    list.turnTo(index)
            }
            Component.onCompleted: if (isSelected)
                later.restart()
        }
        cacheBuffer: wheel.pitch * 80
        highlightRangeMode: ListView.StrictlyEnforceRange
        preferredHighlightBegin: (height - wheel.pitch) / 2
        preferredHighlightEnd: (height + wheel.pitch) / 2
        highlightMoveDuration: 0

        // In the next turn, unless the drum is gone by then.
        Timer {
            id: later

            interval: 0
            onTriggered: list.settleOnSelected()
        }
        NumberAnimation on contentY {
            id: turning

            running: false
            duration: Theme.calm
            easing.type: Easing.OutCubic
        }
    }
    // Deliberate: not what a Flickable makes of a pull, which leaves out its beginning and springs back from its end.
    PointHandler {
        id: hand

        readonly property real slack: 10  // that a hand may tremble
        property real start: 0  // where the view stood
        property real along: 0
        property bool pulls: false

        function follow() {
            const before = along
            along = point.pressPosition.y - point.position.y
            pulls = pulls || Math.abs(along) > slack
            if (!pulls || along === before)
                return
            turning.stop()
            list.contentY = Math.max(list.placeOf(0), Math.min(start + along, list.placeOf(list.count - 1)))
            wheel.speed = -point.velocity.y
            rest.restart()
        }
        function letGo() {
            const rows = (list.contentY - list.placeOf(0)) / wheel.pitch
            const pulled = rows - wheel.wanted()
            const whole = Math.round(pulled + 0.2 * wheel.speed / wheel.pitch)
            const steps = whole === 0 && Math.abs(pulled) > 0.2 ? Math.sign(pulled) : whole
            wheel.choose(Math.max(0, Math.min(wheel.wanted() + steps, list.count - 1)))
        }

        onActiveChanged: {
            if (active)
                start = list.contentY
            else if (pulls)
                letGo()
            along = 0
            pulls = false
            wheel.speed = 0
        }
        // The point that was let go is told once more, as one that is nowhere.
        onPointChanged: if (active && point.id !== -1)
            follow()
    }
    // A hand that rests before it lets go flings nothing.
    Timer {
        id: rest

        interval: 60
        onTriggered: wheel.speed = 0
    }
    // One choice for each notch, and for each row that a touchpad moves.
    WheelHandler {
        property real turned: 0

        onWheel: event => {
            turned += event.pixelDelta.y !== 0 ? event.pixelDelta.y / wheel.pitch : event.angleDelta.y / 120
            const steps = Math.trunc(turned)
            turned -= steps
            wheel.choose(Math.max(0, Math.min(wheel.wanted() - steps, list.count - 1)))
        }
    }
}
