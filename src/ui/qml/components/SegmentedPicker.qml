// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick

// One of a few choices, all in sight. `options` are rows with `id`, `title` and `isSelected`.
Rectangle {
    id: control

    required property string name
    required property var options
    signal picked(string option)

    implicitWidth: 328
    implicitHeight: Math.max(Theme.touch, 6 + 16 + Theme.subheadline * 1.25)
    radius: Theme.radius
    color: Theme.field
    opacity: enabled ? 1 : Theme.disabledOpacity

    Accessible.role: Accessible.PageTabList
    Accessible.name: name

    function move(from: int, by: int) {
        const next = repeater.itemAt(from + by) as Pressable
        if (!next)
            return
        next.forceActiveFocus(Qt.TabFocusReason)
        next.activate()
    }

    Row {
        id: line

        x: 3
        width: parent.width - 6
        height: parent.height
        LayoutMirroring.enabled: Theme.mirrored

        Repeater {
            id: repeater

            model: control.options

            Pressable {
                id: segment

                required property var row
                required property int index
                readonly property bool isSelected: row.isSelected

                width: line.width / repeater.count
                height: line.height
                text: row.title
                cornerRadius: Theme.radius - 3
                focusGap: -2
                focusTarget: face

                onClicked: control.picked(row.id)
                Keys.onLeftPressed: control.move(index, Theme.mirrored ? 1 : -1)
                Keys.onRightPressed: control.move(index, Theme.mirrored ? -1 : 1)

                voice: Accessible.PageTab
                Accessible.selectable: true
                Accessible.selected: isSelected

                Rectangle {
                    id: face

                    y: 3
                    width: parent.width
                    height: parent.height - 6
                    radius: segment.cornerRadius
                    color: segment.isSelected ? Theme.segment : "transparent"

                    PressTint {
                        anchors.fill: parent
                        radius: parent.radius
                        over: segment
                        visible: !segment.isSelected
                    }
                }
                Label {
                    x: 2
                    width: parent.width - 4
                    height: parent.height
                    text: segment.text
                    verticalAlignment: Text.AlignVCenter
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.NoWrap
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: 9
                    size: Theme.subheadline
                    font.weight: segment.isSelected ? Font.DemiBold : Font.Medium
                    color: segment.isSelected ? Theme.text : Theme.secondary
                    Accessible.ignored: true
                }
            }
        }
    }
}
