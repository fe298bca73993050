// SPDX-License-Identifier: MIT
import QtQuick

// One dose that was recorded today, and the way to take the record back. `row`: name, statusText, statusColor,
// timeText, timing, timingColor, undoSymbol, undoAlert.
RecordRow {
    id: control

    required property var row
    signal undone

    text: row.name
    detail: row.timeText
    spoken: [row.name, row.timeText, row.statusText, row.timing].filter(part => part).join(", ")

    Badge {
        anchors.verticalCenter: parent.verticalCenter
        visible: control.row.timing !== null
        radius: 6
        text: control.row.timing ?? ""
        silent: true
        tone: control.row.timingColor ?? "blue"
    }
    Badge {
        anchors.verticalCenter: parent.verticalCenter
        text: control.row.statusText
        silent: true
        tone: control.row.statusColor
        size: Theme.caption
        sidePadding: 8
        endPadding: 3
    }
    IconButton {
        symbol: control.row.undoSymbol
        symbolSize: 20
        text: control.row.undoAlert.confirm + ", " + control.row.name
        onClicked: control.undone()
    }
}
