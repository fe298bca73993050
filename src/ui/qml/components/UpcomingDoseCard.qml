// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts

// One open dose of the coming days. `row`: name, dosageText, icon, color, timeText, relative, relativeColor, actions.
Card {
    id: card

    required property var row
    // Too narrow for the time beside the name.
    readonly property bool stacked: width < 26 * Theme.body
    readonly property color relativeColor: row.relativeColor === "red" ? Theme.ink("red") : Theme.secondary
    signal taken
    signal skipped

    implicitHeight: line.implicitHeight + 2 * padding
    padding: 12

    RowLayout {
        id: line

        width: parent.width
        spacing: 10

        MedicineIcon {
            visible: card.row.icon !== null
            symbol: card.row.icon ?? ""
            tone: card.row.color
            diameter: Math.max(40, 1.6 * symbolSize)
            symbolSize: Theme.title3
        }
        GridLayout {
            columns: card.stacked ? 1 : 2
            columnSpacing: 10
            rowSpacing: 4

            ColumnLayout {
                spacing: 1

                Label {
                    Layout.fillWidth: true
                    text: card.row.name
                    size: Theme.subheadline
                    font.weight: Font.DemiBold
                }
                Label {
                    Layout.fillWidth: true
                    text: card.row.dosageText
                    color: Theme.secondary
                    size: Theme.caption
                }
            }
            ColumnLayout {
                readonly property int side: card.stacked ? Qt.AlignLeft : Qt.AlignRight

                spacing: 1

                Label {
                    Layout.alignment: parent.side
                    text: card.row.timeText
                    wrapMode: Text.NoWrap
                    size: Theme.subheadline
                    font.weight: Font.Medium
                }
                Label {
                    Layout.alignment: parent.side
                    text: card.row.relative
                    wrapMode: Text.NoWrap
                    color: card.relativeColor
                    size: Theme.caption
                }
            }
        }
        Repeater {
            model: card.row.actions

            IconButton {
                required property var row

                symbol: row.symbol
                text: row.title + ", " + card.row.name
                tone: row.id === "take" ? "green" : "orange"
                kind: row.id === "take" ? "solid" : "tinted"
                onClicked: row.id === "take" ? card.taken() : card.skipped()
            }
        }
    }
}
