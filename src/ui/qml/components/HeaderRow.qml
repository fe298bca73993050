// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts

// What a screen is about. `row`: icon, color, name, dosageText.
Item {
    id: control

    required property var row

    width: parent ? parent.width : 328
    implicitHeight: line.implicitHeight + 2 * Theme.padding

    RowLayout {
        id: line

        x: Theme.padding
        y: Theme.padding
        width: parent.width - 2 * Theme.padding
        spacing: 14

        MedicineIcon {
            symbol: control.row.icon
            tone: control.row.color
            diameter: 60
            symbolSize: 33
        }
        ColumnLayout {
            spacing: 2

            Label {
                Layout.fillWidth: true
                visible: text !== ""
                text: control.row.name ?? ""
                size: Theme.title2
                font.weight: Font.Bold
                Accessible.role: Accessible.Heading
            }
            Label {
                Layout.fillWidth: true
                text: control.row.dosageText
                color: Theme.secondary
                size: Theme.subheadline
            }
        }
    }
}
