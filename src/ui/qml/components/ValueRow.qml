// SPDX-License-Identifier: MIT
import QtQuick

// A value that is only shown. `row`: label, text, detail, symbol, color.
ListRow {
    id: control

    required property var row
    readonly property bool plain: !row.label

    width: parent ? parent.width : implicitWidth
    text: row.label ?? ""
    stackable: true
    voice: Accessible.StaticText
    Accessible.name: [row.label, row.text, row.detail].filter(part => part).join(", ")
    Accessible.ignored: false

    Item {
        width: parent.width
        implicitWidth: Math.max(value.implicitWidth + (mark.visible ? mark.width + 6 : 0), below.implicitWidth)
        implicitHeight: value.height + (below.visible ? below.height + 1 : 0)

        readonly property bool atEnd: !control.plain && !control.stacked

        Symbol {
            id: mark

            visible: !!control.row.symbol
            name: control.row.symbol ?? ""
            size: Theme.body * 1.1
            color: Theme.symbol(control.row.color ?? "grey")
            anchors.right: value.left
            anchors.rightMargin: 6
            anchors.verticalCenter: value.verticalCenter
        }
        Label {
            id: value

            anchors.right: parent.right
            width: parent.atEnd ? Math.min(implicitWidth, parent.width) : parent.width
            text: control.row.text
            horizontalAlignment: parent.atEnd ? Text.AlignRight : Text.AlignLeft
            color: control.plain ? Theme.text
                : control.row.color ? Theme.ink(control.row.color) : Theme.secondary
            font.weight: below.visible ? Font.Medium : Font.Normal
            Accessible.ignored: true
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
            Accessible.ignored: true
        }
    }
}
