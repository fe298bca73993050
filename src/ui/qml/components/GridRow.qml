// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick

// A grid of swatches, icons or days below its label. `row`: label, style, columns, spacing, cellSize, cells. Each cell
// is touched up to half the gap around it.
Item {
    id: control

    required property var row
    property bool separated: !Positioner.isFirstItem
    readonly property real pitch: Math.min(row.cellSize + row.spacing, width / row.columns)
    signal picked(string cell)

    width: parent ? parent.width : implicitWidth
    implicitWidth: 328
    implicitHeight: column.height + 22

    // From the cell in focus to another; beyond the grid the key is somebody else's.
    function walk(event: KeyEvent, by: int) {
        const cells = Array.from(grid.children).filter(child => child instanceof Checkable)
        const next = cells[cells.findIndex(cell => cell.activeFocus) + by]
        next?.forceActiveFocus(Qt.TabFocusReason)
        event.accepted = !!next
    }

    Accessible.role: Accessible.Grouping
    Accessible.name: row.label

    Rectangle {
        visible: control.separated
        x: Theme.padding
        width: parent.width - 2 * Theme.padding
        height: Theme.hairline
        color: Theme.separator
    }
    Column {
        id: column

        y: 12
        width: parent.width
        spacing: 8

        Label {
            x: Theme.padding
            width: parent.width - 2 * Theme.padding
            text: control.row.label
            Accessible.ignored: true
        }
        Grid {
            id: grid

            readonly property real start: parent.width < 420 ? (parent.width - width) / 2 : Theme.padding - control.row.spacing / 2

            x: Theme.mirrored ? parent.width - width - start : start
            columns: control.row.columns
            LayoutMirroring.enabled: Theme.mirrored
            Keys.onLeftPressed: event => control.walk(event, Theme.mirrored ? 1 : -1)
            Keys.onRightPressed: event => control.walk(event, Theme.mirrored ? -1 : 1)
            Keys.onUpPressed: event => control.walk(event, -columns)
            Keys.onDownPressed: event => control.walk(event, columns)

            Repeater {
                model: control.row.style === "swatches" ? control.row.cells : null

                Swatch {
                    required property var row

                    width: control.pitch
                    height: control.pitch
                    color: row.color
                    isSelected: row.isSelected
                    text: row.title
                    diameter: control.row.cellSize
                    onClicked: control.picked(row.id)
                }
            }
            Repeater {
                model: control.row.style === "icons" ? control.row.cells : null

                IconCell {
                    required property var row

                    width: control.pitch
                    height: control.pitch
                    symbol: row.symbol
                    tone: row.color ?? "grey"
                    isSelected: row.isSelected
                    text: row.title
                    side: control.row.cellSize
                    onClicked: control.picked(row.id)
                }
            }
            Repeater {
                model: control.row.style === "days" ? control.row.cells : null

                DayButton {
                    required property var row

                    width: control.pitch
                    height: control.pitch
                    isSelected: row.isSelected
                    text: row.title
                    diameter: control.row.cellSize
                    onClicked: control.picked(row.id)
                }
            }
        }
    }
}
