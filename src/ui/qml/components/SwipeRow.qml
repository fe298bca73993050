// SPDX-License-Identifier: MIT
import QtQuick

// A row that can be taken away, as long as `removable` says so: swiped aside it uncovers a red button; the Delete key, a
// long press and the menu key reach the same without a swipe. `subject` is what a screen reader calls it.
FocusScope {
    id: swipe

    required property string subject
    required property string removeTitle
    property string removeSymbol: "trash"
    default property alias content: cover.data
    readonly property real reach: 92
    readonly property real patience: 0.8  // a press that lasts longer opens the menu
    readonly property int side: Theme.mirrored ? 1 : -1
    property bool removable: true
    property bool open: false
    signal removed

    implicitWidth: 328
    implicitHeight: cover.childrenRect.height
    clip: true

    function openMenu() {
        if (removable)
            menu.open()
    }
    function remove() {
        if (removable)
            removed()
    }

    onRemovableChanged: if (!removable)
        open = false

    Keys.onDeletePressed: remove()
    Keys.onMenuPressed: openMenu()
    Keys.onEscapePressed: event => {
        event.accepted = open
        open = false
    }

    Pressable {
        id: remover

        x: Theme.mirrored ? 0 : parent.width - width
        width: Math.abs(cover.x)
        height: parent.height
        visible: cover.x !== 0
        text: swipe.removeTitle + ", " + swipe.subject
        focusGap: -6
        onClicked: {
            swipe.open = false
            swipe.remove()
        }

        Rectangle {
            anchors.fill: parent
            anchors.margins: 4
            radius: Theme.radius
            color: Theme.solid("red")

            PressTint {
                anchors.fill: parent
                radius: parent.radius
                over: remover
            }
        }
        Item {
            anchors.fill: parent
            clip: true

            Column {
                anchors.centerIn: parent
                width: swipe.reach - 16
                spacing: 2

                Symbol {
                    anchors.horizontalCenter: parent.horizontalCenter
                    name: swipe.removeSymbol
                    size: 22
                    color: Theme.onSolid
                }
                Label {
                    width: parent.width
                    text: swipe.removeTitle
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.NoWrap
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: 8
                    color: Theme.onSolid
                    size: Theme.caption
                    font.weight: Font.DemiBold
                    Accessible.ignored: true
                }
            }
        }
    }
    Item {
        id: cover

        width: parent.width
        height: parent.height
        x: swipe.open ? swipe.side * swipe.reach : 0

        Behavior on x {
            enabled: !drag.active
            NumberAnimation { duration: Theme.calm; easing.type: Easing.OutCubic }
        }
    }
    DragHandler {
        id: drag

        property real start: 0

        enabled: swipe.removable
        target: null
        yAxis.enabled: false
        onActiveChanged: {
            if (active) {
                start = cover.x
            } else {
                swipe.open = cover.x * swipe.side > swipe.reach / 2
                cover.x = Qt.binding(() => swipe.open ? swipe.side * swipe.reach : 0)
            }
        }
        onTranslationChanged: {
            if (active)
                cover.x = swipe.side * Math.min(swipe.reach, Math.max(0, (start + translation.x) * swipe.side))
        }
    }
    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: swipe.openMenu()
    }
    TapHandler {
        acceptedDevices: PointerDevice.TouchScreen
        longPressThreshold: swipe.patience
        onLongPressed: swipe.openMenu()
    }

    MenuPopup {
        id: menu

        parent: swipe
        atEnd: true
        name: swipe.removeTitle
        items: [{ id: "remove", title: swipe.removeTitle, symbol: swipe.removeSymbol, isDestructive: true }]
        onPicked: swipe.remove()
    }
}
