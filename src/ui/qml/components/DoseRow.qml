// SPDX-License-Identifier: MIT
import QtQuick

// One dose that was recorded. `row`: symbol, color, dateText, timeText, statusText.
RecordRow {
    id: control

    required property var row

    symbol: row.symbol
    symbolColor: Theme.symbol(row.color)
    text: row.dateText
    detail: row.timeText
    spoken: [row.dateText, row.timeText, row.statusText].join(", ")

    Label {
        text: control.row.statusText
        wrapMode: Text.NoWrap
        color: Theme.ink(control.row.color)
        size: Theme.subheadline
        font.weight: Font.Medium
        Accessible.ignored: true
    }
}
