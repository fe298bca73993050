// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Pillora

// Every open dose of the coming days. See screens/UpcomingView.h.
TabPage {
    id: screen

    required property UpcomingModel model
    readonly property var upcoming: model.content

    title: upcoming.title

    LongList {
        id: list

        anchors.fill: parent
        focus: true
        model: screen.upcoming.days
        hasMore: screen.upcoming.hasMore
        hasPrevious: screen.upcoming.hasPrevious
        onEndReached: screen.model.showMore()
        onStartReached: screen.model.showPrevious()
        onStartWanted: screen.model.showFirst()

        delegate: Column {
            id: entry

            required property var row

            width: list.columnWidth
            x: list.columnX
            bottomPadding: row.isGroupsLast ? 18 : 10

            Optional {
                when: entry.row.heading !== null

                Label {
                    width: entry.width
                    topPadding: 8
                    bottomPadding: 10
                    text: entry.row.heading?.title ?? ""
                    size: Theme.headline
                    font.weight: Font.DemiBold
                    Accessible.role: Accessible.Heading
                }
            }
            UpcomingDoseCard {
                width: parent.width
                row: entry.row
                onTaken: screen.model.take(row.medicineId, row.time)
                onSkipped: screen.model.skip(row.medicineId, row.time)
            }
        }
    }
    EmptyState {
        anchors.centerIn: parent
        visible: screen.upcoming.empty !== null
        symbol: screen.upcoming.empty?.symbol ?? "pills"
        title: screen.upcoming.empty?.title ?? ""
        text: screen.upcoming.empty?.text ?? ""
    }
}
