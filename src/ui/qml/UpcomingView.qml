// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Pillora
import QtQuick.Layouts

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
        onEndReached: screen.model.showMore()

        delegate: ColumnLayout {
            id: day

            required property var row

            width: list.columnWidth
            x: list.columnX
            spacing: 10

            Label {
                Layout.fillWidth: true
                Layout.topMargin: 8
                text: day.row.title
                size: Theme.headline
                font.weight: Font.DemiBold
                Accessible.role: Accessible.Heading
            }
            Repeater {
                model: day.row.doses

                UpcomingDoseCard {
                    Layout.fillWidth: true
                    onTaken: screen.model.take(row.medicineId, row.time)
                    onSkipped: screen.model.skip(row.medicineId, row.time)
                }
            }
            Item {
                implicitHeight: 8
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
