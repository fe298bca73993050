// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Pillora
import Pillora.Samples

Page {
    title: "History"
    tab: 3
    toolbar: null

    SegmentedPicker {
        width: parent.width
        name: "Time Range"
        options: Sample.rows([{ id: "a", title: "Today", isSelected: false }, { id: "b", title: "Week", isSelected: true },
            { id: "c", title: "Month", isSelected: false }, { id: "d", title: "All", isSelected: false }])
    }
    Card {
        width: parent.width

        RowLayout {
            width: parent.width
            spacing: 16

            ProgressRing { value: 0.86; text: "86"; suffix: "%"; tone: "green"; trackTone: "grey"; diameter: 80; lineWidth: 8 }
            ColumnLayout {
                spacing: 2

                Label { Layout.fillWidth: true; text: "Adherence Rate"; color: Theme.secondary; size: Theme.subheadline }
                Label { Layout.fillWidth: true; text: "Great job!"; size: Theme.title3; font.weight: Font.Bold }
            }
        }
    }
    ChipRow {
        chips: Sample.rows([{ id: "all", title: "All", symbol: "list.bullet", color: "blue", isSelected: true },
            { id: "taken", title: "Taken", symbol: "checkmark.circle.fill", color: "green", isSelected: false },
            { id: "missed", title: "Missed", symbol: "xmark.circle.fill", color: "red", isSelected: false },
            { id: "skipped", title: "Skipped", symbol: "forward.circle.fill", color: "orange", isSelected: false }])
    }
    SearchField {
        width: parent.width
        name: "Search medicines"
    }
    ListSection {
        header: "Active"

        SwipeRow {
            width: parent.width
            subject: "Aspirin"
            removeTitle: "Delete"
            open: true

            LinkRow { width: parent.width; text: "Aspirin"; detail: "100 mg"; mark: "chevron.right"; separated: false }
        }
        SwipeRow {
            width: parent.width
            subject: "Vitamin D"
            removeTitle: "Delete"

            LinkRow { width: parent.width; text: "Vitamin D"; detail: "5 drops"; mark: "chevron.right"; separated: true }
        }
    }
}
