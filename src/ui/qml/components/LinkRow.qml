// SPDX-License-Identifier: MIT
import QtQuick

// A row that leads somewhere: further into the app, or with a symbol of its own out of it.
ListRow {
    id: control

    property string mark: "chevron.right"
    property string value: ""

    width: parent ? parent.width : implicitWidth
    interactive: true
    stackable: true
    voice: Accessible.Link

    Item {
        implicitWidth: valueText.implicitWidth + arrow.width + 6
        implicitHeight: Math.max(valueText.height, arrow.height)
        width: parent.width

        Label {
            id: valueText

            anchors.right: arrow.left
            anchors.rightMargin: 6
            anchors.verticalCenter: parent.verticalCenter
            text: control.value
            color: Theme.secondary
            Accessible.ignored: true
        }
        Symbol {
            id: arrow

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            name: control.mark
            size: Theme.body
            color: Theme.placeholder
        }
    }
}
