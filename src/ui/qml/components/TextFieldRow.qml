// SPDX-License-Identifier: MIT
import QtQuick

// A text that is edited in its row. `row`: label, text, keypad, style.
Item {
    id: control

    required property var row
    property bool separated: !Positioner.isFirstItem
    signal edited(string text)

    width: parent ? parent.width : implicitWidth
    implicitWidth: 328
    implicitHeight: Math.max(Theme.rowHeight, field.implicitHeight)

    Rectangle {
        visible: control.separated
        x: Theme.padding
        width: parent.width - 2 * Theme.padding
        height: Theme.hairline
        color: Theme.separator
    }
    TextField {
        id: field

        anchors.fill: parent
        name: control.row.label
        shown: control.row.text
        isTitle: control.row.style === "title"
        inputMethodHints: control.row.keypad === "decimal" ? Qt.ImhFormattedNumbersOnly : Qt.ImhNone
        onEdited: text => control.edited(text)
    }
}
