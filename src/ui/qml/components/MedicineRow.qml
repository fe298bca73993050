// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts

// One medicine of the list: opens it, and swiped aside takes it away. `row`: name, dosageText, icon, color, isActive,
// inactiveBadge, intervalSymbol, nextDoseText, chevron, remove.
SwipeRow {
    id: control

    required property var row
    property bool separated: !Positioner.isFirstItem
    // Too narrow for the next dose beside the name, which is not broken for it; gaps and arrow take 40.
    readonly property bool stacked: width < 15 * Theme.body
        || caption.implicitWidth + next.implicitWidth > line.width - picture.room - 40
    signal opened

    width: parent ? parent.width : implicitWidth
    subject: row.name
    removeTitle: row.remove.title
    removeSymbol: row.remove.symbol

    Pressable {
        id: face

        width: parent.width
        implicitHeight: Math.max(64, line.implicitHeight + 20)
        focus: true
        focusGap: -3
        text: [control.row.name, control.row.dosageText, control.row.inactiveBadge, control.row.nextDoseText].filter(part => part).join(", ")
        voice: Accessible.Link
        longest: control.patience
        onClicked: control.opened()
        onHeld: control.openMenu()

        Rectangle {
            visible: control.separated
            x: Theme.padding
            width: parent.width - 2 * Theme.padding
            height: Theme.hairline
            color: Theme.separator
        }
        PressTint {
            anchors.fill: parent
            anchors.margins: 4
            radius: Theme.radius
            over: face
        }
        RowLayout {
            id: line

            x: Theme.padding
            y: 10
            width: parent.width - Theme.padding - 12
            height: parent.height - 20
            spacing: 12

            MedicineIcon {
                id: picture

                readonly property real room: visible ? width + line.spacing : 0

                visible: control.row.icon !== null
                symbol: control.row.icon ?? ""
                tone: control.row.color
                diameter: 40
                symbolSize: 22
                opacity: control.row.isActive ? 1 : 0.6
            }
            GridLayout {
                columns: control.stacked ? 1 : 2
                columnSpacing: 12
                rowSpacing: 4

                ColumnLayout {
                    spacing: 2

                    Label {
                        id: caption

                        Layout.fillWidth: true
                        text: control.row.name
                        font.weight: Font.Medium
                        Accessible.ignored: true
                    }
                    RowLayout {
                        spacing: 6

                        Label {
                            Layout.fillWidth: true
                            Layout.maximumWidth: implicitWidth + 1
                            text: control.row.dosageText
                            color: Theme.secondary
                            size: Theme.subheadline
                            Accessible.ignored: true
                        }
                        Badge {
                            visible: control.row.inactiveBadge !== null
                            text: control.row.inactiveBadge ?? ""
                            silent: true
                            solid: true
                            tone: "grey"
                            weight: Font.Medium
                        }
                    }
                }
                RowLayout {
                    id: next

                    spacing: 12

                    Symbol {
                        name: control.row.intervalSymbol
                        size: 18
                        color: Theme.secondary
                    }
                    Label {
                        visible: text !== ""
                        text: control.row.nextDoseText ?? ""
                        wrapMode: Text.NoWrap
                        color: Theme.secondary
                        size: Theme.caption
                        Accessible.ignored: true
                    }
                }
            }
            Symbol {
                name: control.row.chevron
                size: 16
                color: Theme.placeholder
            }
        }
    }
}
