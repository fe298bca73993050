// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick

// A few buttons side by side, equally wide, or below each other where their words do not fit. `actions` are rows with
// `id`, `title` and `symbol`; what an action does gives it its colour.
Grid {
    id: grid

    required property var actions
    property string subject: ""  // what the actions are done to, for those who hear their names
    property var tones: ({ take: "green", skip: "orange" })
    property real widest: 0
    readonly property int count: repeater.count
    signal triggered(string id)

    function measure() {
        let most = 0
        for (let i = 0; i < repeater.count; ++i)
            most = Math.max(most, repeater.itemAt(i)?.implicitWidth ?? 0)
        widest = most
    }

    onCountChanged: measure()

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
            Accessible.name: [row.title, grid.subject].filter(part => part).join(", ")
            symbol: row.symbol ?? ""
            tone: grid.tones[row.id] ?? "blue"
            onClicked: grid.triggered(row.id)
            onImplicitWidthChanged: grid.measure()
        }
    }
}
