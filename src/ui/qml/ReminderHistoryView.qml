// SPDX-License-Identifier: MIT
import QtQuick
import Pillora
import QtQuick.Layouts

// What became of every dose. See screens/ReminderHistoryView.h. Deliberate: no bound components here, and so names
// that qmllint calls unqualified, because a list of Qt 6.4 makes its header in a context of its own, which a bound
// component refuses.
TabPage {
    id: screen

    required property HistoryModel model
    readonly property var history: model.content

    title: history.title

    LongList {
        id: list

        anchors.fill: parent
        focus: true
        model: screen.history.days
        hasMore: screen.history.hasMore
        hasPrevious: screen.history.hasPrevious
        onEndReached: screen.model.showMore()
        onStartReached: screen.model.showPrevious()
        onStartWanted: screen.model.showFirst()

        // qmllint disable unqualified
        header: Column {
            id: head

            x: list.columnX
            width: list.columnWidth
            topPadding: 8
            bottomPadding: 12
            spacing: 16

            SegmentedPicker {
                width: parent.width
                name: screen.history.rangeTitle
                options: screen.history.ranges
                onPicked: range => screen.model.selectRange(range)
            }
            AdherenceCard {
                width: parent.width
                adherence: screen.history.adherence
            }
            RowLayout {
                width: parent.width
                spacing: 8

                Repeater {
                    model: screen.history.stats

                    StatBadge {
                        required property var row

                        Layout.fillWidth: true
                        Layout.preferredWidth: 10
                        symbol: row.icon
                        value: row.value
                        label: row.label
                        tone: row.color
                    }
                }
            }
            ChipRow {
                chips: screen.history.chips
                onPicked: chip => screen.model.selectFilter(chip)
            }
            EmptyState {
                anchors.horizontalCenter: parent.horizontalCenter
                topPadding: 32
                visible: screen.history.empty !== null
                symbol: screen.history.empty?.symbol ?? "clock.arrow.circlepath"
                title: screen.history.empty?.title ?? ""
                text: screen.history.empty?.text ?? ""
            }
        }
        delegate: Column {
            id: entry

            required property var row

            x: list.columnX
            width: list.columnWidth
            bottomPadding: row.isLast ? 8 : 0

            Optional {
                when: entry.row.heading !== null

                RowLayout {
                    width: entry.width
                    height: implicitHeight + 20

                    Label {
                        Layout.fillWidth: true
                        Layout.leftMargin: Theme.padding
                        text: entry.row.heading?.title ?? ""
                        color: Theme.secondary
                        size: Theme.footnote
                        font.weight: Font.DemiBold
                        Accessible.role: Accessible.Heading
                    }
                    Label {
                        Layout.rightMargin: Theme.padding
                        text: entry.row.heading?.count ?? ""
                        color: Theme.secondary
                        size: Theme.footnote
                    }
                }
            }
            CardSlice {
                width: parent.width
                first: entry.row.isFirst
                last: entry.row.isLast

                HistoryRow {
                    row: entry.row
                    onActed: action => screen.model.act(row.id, action)
                }
            }
        }
    }
}
