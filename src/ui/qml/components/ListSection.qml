// SPDX-License-Identifier: MIT
import QtQuick

// Rows on one card, with a heading above and a note below where there are any.
Column {
    id: section

    property string header: ""
    property string footer: ""
    default property alias rows: column.data

    width: parent ? parent.width : 328
    spacing: 8

    SectionHeading {
        text: section.header
    }
    Card {
        width: parent.width
        implicitHeight: column.height
        padding: 0

        Column {
            id: column

            width: parent.width
            Accessible.role: Accessible.List
            Accessible.name: section.header
            Accessible.ignored: section.header === ""
        }
    }
    Label {
        visible: text !== ""
        x: Theme.padding
        width: parent.width - 2 * Theme.padding
        text: section.footer
        color: Theme.secondary
        size: Theme.footnote
        lineHeight: 1.15
    }
}
