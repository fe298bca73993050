// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Templates as T

// One of a few choices, all in sight. `options` are rows with `id`, `title` and `isSelected`.
T.Control {
    id: control

    required property string name
    required property var options
    signal picked(string option)

    implicitWidth: 328
    implicitHeight: Math.max(Theme.touch, 6 + 16 + Theme.subheadline * 1.25)
    leftPadding: 3
    rightPadding: 3
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

    background: Rectangle {
        color: Theme.field
        radius: Theme.radius
    }

    contentItem: Row {
        LayoutMirroring.enabled: Theme.mirrored

        Repeater {
            id: repeater

            model: control.options

            Pressable {
                id: segment

                required property var row
                required property int index
                readonly property bool isSelected: row.isSelected

                width: control.availableWidth / repeater.count
                height: control.availableHeight
                text: row.title
                cornerRadius: Theme.radius - 3
                focusGap: -2
                focusTarget: face
                padding: 2

                onClicked: control.picked(row.id)
                Keys.onLeftPressed: control.move(index, Theme.mirrored ? 1 : -1)
                Keys.onRightPressed: control.move(index, Theme.mirrored ? -1 : 1)

                voice: Accessible.PageTab
                Accessible.selected: isSelected

                contentItem: Label {
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
                background: Item {
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
                }
            }
        }
    }
}
