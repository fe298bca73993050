// SPDX-License-Identifier: MIT
import QtQuick

// A value that is only shown, or a button in its place. `row`: label, text, detail, symbol, color, action.
ListRow {
    id: control

    required property var row
    readonly property bool plain: !row.label
    signal triggered(string id)

    width: parent ? parent.width : implicitWidth
    text: row.label ?? ""
    stackable: true
    spoken: plain ? "" : [row.label, row.text, row.detail].filter(part => part).join(", ")

    Item {
        width: parent.width
        implicitWidth: Math.max(value.implicitWidth, below.implicitWidth, button.visible ? button.implicitWidth : 0)
        implicitHeight: Math.max(value.height + (below.visible ? below.height + 1 : 0), button.visible ? button.height : 0)

        readonly property bool atEnd: !control.plain && !control.stacked

        Symbol {
            id: mark

            visible: !!control.row.symbol
            name: control.row.symbol ?? ""
            size: Theme.body * 1.1
            color: Theme.symbol(control.row.color ?? "grey")
            x: Theme.mirrored ? value.width - value.start - width : value.start
            anchors.verticalCenter: value.verticalCenter
        }
        Label {
            id: value

            readonly property real room: mark.visible ? mark.width + 6 : 0
            readonly property real start: parent.atEnd ? width - contentWidth - room : 0

            width: parent.width
            leftPadding: Theme.mirrored ? 0 : room
            rightPadding: Theme.mirrored ? room : 0
            text: control.row.text
            horizontalAlignment: parent.atEnd ? Text.AlignRight : Text.AlignLeft
            color: control.plain ? Theme.text
                : control.row.color ? Theme.ink(control.row.color) : Theme.secondary
            font.weight: below.visible ? Font.Medium : Font.Normal
            Accessible.ignored: !control.plain
        }
        Label {
            id: below

            visible: !!control.row.detail
            anchors.top: value.bottom
            anchors.topMargin: 1
            width: parent.width
            text: control.row.detail ?? ""
            horizontalAlignment: value.horizontalAlignment
            color: Theme.secondary
            size: Theme.footnote
            Accessible.ignored: !control.plain
        }
        PButton {
            id: button

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            visible: !!control.row.action
            compact: true
            text: control.row.action?.title ?? ""
            onClicked: control.triggered(control.row.action.id)
        }
    }
}
