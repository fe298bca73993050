// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick

// A few buttons side by side, equally wide, or below each other where their words do not fit. `actions` are rows with
// `id`, `title` and `symbol`; what an action does gives it its colour.
Grid {
    id: grid

    required property var actions
    property var tones: ({ take: "green", skip: "orange" })
    property real widest: 0
    readonly property int count: repeater.count
    signal triggered(string id)

    columns: widest <= (width - (count - 1) * spacing) / count ? count : 1
    spacing: 8
    LayoutMirroring.enabled: Theme.mirrored

    Repeater {
        id: repeater

        model: grid.actions

        PButton {
            required property var row

            width: (grid.width - (grid.columns - 1) * grid.spacing) / grid.columns
            compact: true
            sidePadding: 6
            text: row.title
            symbol: row.symbol ?? ""
            tone: grid.tones[row.id] ?? "blue"
            onClicked: grid.triggered(row.id)
            onImplicitWidthChanged: grid.widest = Math.max(grid.widest, implicitWidth)
            Component.onCompleted: grid.widest = Math.max(grid.widest, implicitWidth)
        }
    }
}
