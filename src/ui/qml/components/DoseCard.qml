// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts

// One open dose: what and when, and once it is expanded what to do about it.
Card {
    id: card

    required property string name
    required property string dosage
    required property var icon
    required property string tone
    required property string time
    required property string badge
    required property string badgeTone
    required property var actions
    property bool expanded: false
    // Too narrow for the time beside the name, which is not broken for it; gaps and arrow take 42.
    readonly property bool stacked: width < 15 * Theme.body
        || caption.implicitWidth + Math.max(due.implicitWidth, hint.implicitWidth) > line.width - picture.room - 42
    signal acted(string id)

    padding: 0
    implicitHeight: head.height + drawer.height
    clip: true

    Pressable {
        id: head

        width: parent.width
        implicitHeight: line.implicitHeight + 2 * Theme.padding
        cornerRadius: Theme.radiusCard
        focusGap: -3
        text: `${card.name}, ${card.dosage}, ${card.time}, ${card.badge}`
        onClicked: card.expanded = !card.expanded

        PressTint {
            anchors.fill: parent
            radius: Theme.radiusCard
            over: head
        }
        RowLayout {
            id: line

            x: Theme.padding
            y: Theme.padding
            width: parent.width - 2 * Theme.padding
            spacing: 12

            MedicineIcon {
                id: picture

                readonly property real room: visible ? width + line.spacing : 0

                visible: card.icon !== null
                symbol: card.icon ?? ""
                tone: card.tone
                symbolSize: Theme.title2
            }
            GridLayout {
                columns: card.stacked ? 1 : 2
                columnSpacing: 12
                rowSpacing: 6

                ColumnLayout {
                    spacing: 2

                    Label {
                        id: caption

                        Layout.fillWidth: true
                        text: card.name
                        size: Theme.headline
                        font.weight: Font.DemiBold
                        Accessible.ignored: true
                    }
                    Label {
                        Layout.fillWidth: true
                        text: card.dosage
                        color: Theme.secondary
                        size: Theme.subheadline
                        Accessible.ignored: true
                    }
                }
                Grid {
                    columns: card.stacked ? 2 : 1
                    columnSpacing: 8
                    rowSpacing: 4
                    horizontalItemAlignment: Grid.AlignRight
                    verticalItemAlignment: Grid.AlignVCenter

                    Label {
                        id: due

                        text: card.time
                        wrapMode: Text.NoWrap
                        size: Theme.subheadline
                        font.weight: Font.Medium
                        Accessible.ignored: true
                    }
                    Badge {
                        id: hint

                        text: card.badge
                        silent: true
                        tone: card.badgeTone
                        size: Theme.caption
                        sidePadding: 8
                        endPadding: 3
                    }
                }
            }
            Symbol {
                name: "chevron.down"
                size: 18
                color: Theme.placeholder
                rotation: card.expanded ? 180 : 0

                Behavior on rotation {
                    NumberAnimation { duration: Theme.calm; easing.type: Easing.OutCubic }
                }
            }
        }
    }
    Item {
        id: drawer

        readonly property Item buttons: inside.count > 0 ? inside.itemAt(0) : null

        anchors.top: head.bottom
        width: parent.width
        height: card.expanded && buttons ? buttons.height + 1 + 2 * 14 : 0
        visible: height > 0
        clip: true

        Behavior on height {
            NumberAnimation { duration: Theme.calm; easing.type: Easing.OutCubic }
        }

        Rectangle {
            x: Theme.padding
            width: parent.width - 2 * Theme.padding
            height: Theme.hairline
            color: Theme.separator
        }
        Optional {
            id: inside

            when: card.expanded || drawer.height > 0

            ActionRow {
                x: Theme.padding
                y: 15
                width: drawer.width - 2 * Theme.padding
                subject: card.name
                actions: card.actions
                onTriggered: id => card.acted(id)
            }
        }
    }
}
