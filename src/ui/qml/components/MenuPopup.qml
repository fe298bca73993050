// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

// A menu under the button that opened it, scrolling when it is long. `items` are rows, or plain objects, with `id`, `title` and perhaps
// `symbol` and `isDestructive`; the one whose id is `selected` is ticked.
T.Popup {
    id: popup

    required property string name
    required property var items
    property var selected: null
    property bool atEnd: false
    signal picked(string id)

    readonly property real room: parent && parent.Window.window ? parent.Window.window.height : 600

    x: parent ? (atEnd !== Theme.mirrored ? parent.width - width - 4 : 4) : 0
    y: parent ? Math.min(parent.height - 2, Math.max(8, room - height - 8) - stands) : 0
    width: Math.min(Math.max(200, list.widest + 40), 320)
    height: Math.min(list.contentHeight + 12, room - 24)
    margins: 8
    padding: 6
    modal: true
    dim: false
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside

    // How far down the window its parent is.
    property real stands: 0
    function look() {
        stands = parent?.mapToItem(null, 0, 0).y ?? 0
    }
    onRoomChanged: look()

    // The focus returns to where it was.
    property Item before: null
    property bool beforeShown: false

    onAboutToShow: {
        look()
        before = parent?.Window.window?.activeFocusItem ?? null
        beforeShown = before?.visualFocus ?? false
    }
    onClosed: before?.forceActiveFocus(beforeShown ? Qt.TabFocusReason : Qt.PopupFocusReason)

    onOpened: {
        list.currentIndex = Math.max(0, list.indexOfSelected())
        list.positionViewAtIndex(list.currentIndex, ListView.Contain)
        list.forceActiveFocus(Qt.TabFocusReason)
    }

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.quick }
        NumberAnimation { property: "scale"; from: 0.96; to: 1; duration: Theme.quick; easing.type: Easing.OutCubic }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.quick }
    }

    background: Rectangle {
        radius: Theme.radiusCard
        color: Theme.raised
        border.width: 1
        border.color: Theme.separator

        Shadow {
            z: -1
            radius: parent.radius
        }
    }

    ListView {
        id: list

        anchors.fill: parent

        property real widest: 0

        clip: true
        model: popup.items
        boundsBehavior: Flickable.StopAtBounds
        keyNavigationEnabled: true
        keyNavigationWraps: true
        highlightMoveDuration: 0
        LayoutMirroring.enabled: Theme.mirrored
        LayoutMirroring.childrenInherit: true
        Accessible.role: Accessible.PopupMenu
        Accessible.name: popup.name

        T.ScrollBar.vertical: ScrollIndicator {}

        function indexOfSelected(): int {
            for (let i = 0; i < count; ++i) {
                const item = itemAtIndex(i)
                if (item && item.isSelected)
                    return i
            }
            return -1
        }

        Keys.onReturnPressed: (currentItem as Pressable)?.activate()
        Keys.onEnterPressed: (currentItem as Pressable)?.activate()
        Keys.onSpacePressed: (currentItem as Pressable)?.activate()

        delegate: Pressable {
            id: item

            required property var model
            required property int index
            readonly property var row: model.modelData ?? model.row
            readonly property bool isSelected: popup.selected !== null && row.id === popup.selected

            width: ListView.view.width
            implicitHeight: Math.max(Theme.touch, title.implicitHeight + 14)
            takesFocus: false
            text: row.title
            voice: Accessible.MenuItem
            Accessible.checkable: popup.selected !== null
            Accessible.checked: isSelected
            onClicked: {
                popup.close()
                popup.picked(row.id)
            }

            Rectangle {
                anchors.fill: parent
                radius: Theme.radius - 2
                color: item.down ? Theme.press : item.hovered || item.ListView.isCurrentItem ? Theme.hover : "transparent"
            }
            RowLayout {
                anchors.fill: parent
                spacing: 10
                onImplicitWidthChanged: list.widest = Math.max(list.widest, implicitWidth)

                Symbol {
                    Layout.leftMargin: 10
                    visible: popup.selected !== null
                    opacity: item.isSelected ? 1 : 0
                    name: "checkmark"
                    size: Theme.body
                    color: Theme.accent
                }
                Label {
                    id: title

                    Layout.fillWidth: true
                    Layout.leftMargin: popup.selected === null ? 10 : 0
                    text: item.text
                    color: item.row.isDestructive ? Theme.ink("red") : Theme.text
                    font.weight: item.isSelected ? Font.DemiBold : Font.Normal
                    Accessible.ignored: true
                }
                Symbol {
                    Layout.rightMargin: 10
                    visible: !!item.row.symbol
                    name: item.row.symbol ?? ""
                    size: Theme.body * 1.15
                    color: item.row.isDestructive ? Theme.symbol("red") : Theme.secondary
                }
            }
        }
    }
}
