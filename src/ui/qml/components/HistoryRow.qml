// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick

// One dose of the past, and what its record may be changed to. `row`: name, statusText, symbol, color, timeText, timing,
// timingColor, actions.
RecordRow {
    id: control

    required property var row
    signal acted(string action)

    separated: !row.isFirst
    symbol: row.symbol
    symbolColor: Theme.symbol(row.color)
    text: row.name
    detail: row.timeText + "  " + row.statusText
    spoken: [row.name, row.timeText, row.statusText, row.timing].filter(part => part).join(", ")

    Badge {
        anchors.verticalCenter: parent.verticalCenter
        visible: control.row.timing !== null
        radius: 6
        text: control.row.timing ?? ""
        silent: true
        tone: control.row.timingColor ?? "blue"
    }
    Repeater {
        model: control.row.actions

        IconButton {
            id: action

            required property var row

            symbol: row.symbol
            text: row.title + ", " + control.row.name
            kind: "tinted"
            tone: row.id === "take" ? "green" : "orange"
            onClicked: control.acted(action.row.id)
        }
    }
}
