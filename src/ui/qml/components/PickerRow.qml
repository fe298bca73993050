// SPDX-License-Identifier: MIT
import QtQuick

// One of several options, chosen from a menu. `row`: label, selected, valueText, options.
ListRow {
    id: control

    required property var row
    signal edited(string option)

    width: parent ? parent.width : implicitWidth
    text: row.label
    interactive: true
    stackable: true
    onClicked: menu.open()

    voice: Accessible.ComboBox
    Accessible.name: row.label + ", " + row.valueText

    Item {
        implicitWidth: value.implicitWidth + arrows.width + 4
        implicitHeight: value.height
        width: parent.width

        Label {
            id: value

            anchors.right: arrows.left
            anchors.rightMargin: 4
            width: parent.width - arrows.width - 4
            text: control.row.valueText
            horizontalAlignment: Text.AlignRight
            color: Theme.accent
            font.weight: Font.Medium
            Accessible.ignored: true
        }
        Symbol {
            id: arrows

            anchors.right: parent.right
            anchors.rightMargin: -3
            anchors.verticalCenter: parent.verticalCenter
            name: "chevron.up.chevron.down"
            size: Theme.body
            color: Theme.accent
        }
    }

    MenuPopup {
        id: menu

        atEnd: true
        parent: control
        name: control.row.label
        items: control.row.options
        selected: control.row.selected
        onPicked: option => control.edited(option)
    }
}
