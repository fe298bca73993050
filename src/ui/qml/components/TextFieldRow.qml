// SPDX-License-Identifier: MIT
import QtQuick

// A text that is edited in its row, below its name once there is one. `row`: label, text, keypad, style.
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
    Label {
        id: caption

        x: Theme.padding
        y: 7
        width: parent.width - 2 * Theme.padding
        visible: field.length > 0 && !field.isTitle
        text: control.row.label
        wrapMode: Text.NoWrap
        elide: Text.ElideRight
        color: Theme.secondary
        size: Theme.caption
        Accessible.ignored: true
    }
    TextField {
        id: field

        anchors.fill: parent
        topPadding: caption.visible ? caption.y + caption.height : 10
        bottomPadding: caption.visible ? 7 : 10
        name: control.row.label
        shown: control.row.text
        isTitle: control.row.style === "title"
        inputMethodHints: control.row.keypad === "decimal" ? Qt.ImhFormattedNumbersOnly : Qt.ImhNone
        onEdited: text => control.edited(text)
    }
}
