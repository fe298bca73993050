// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import Pillora
import Pillora.Samples

Page {
    title: "Today"

    component Dose: Card {
        id: dose

        required property string name
        required property string dosage
        required property string symbol
        required property string tone
        required property string time
        required property string countdown
        required property string countdownTone
        property bool expanded: false

        width: parent.width

        ColumnLayout {
            width: parent.width
            spacing: 14

            RowLayout {
                spacing: 12

                MedicineIcon { symbol: dose.symbol; tone: dose.tone }
                ColumnLayout {
                    spacing: 2

                    Label { Layout.fillWidth: true; text: dose.name; size: Theme.headline; font.weight: Font.DemiBold }
                    Label { Layout.fillWidth: true; text: dose.dosage; color: Theme.secondary; size: Theme.subheadline }
                }
                ColumnLayout {
                    spacing: 4

                    Label { Layout.alignment: Qt.AlignRight; text: dose.time; size: Theme.subheadline; font.weight: Font.Medium; wrapMode: Text.NoWrap }
                    Badge { Layout.alignment: Qt.AlignRight; text: dose.countdown; tone: dose.countdownTone; size: Theme.caption; sidePadding: 8; endPadding: 3 }
                }
                Symbol { name: "chevron.down"; size: 18; color: Theme.placeholder; rotation: dose.expanded ? 180 : 0 }
            }
            Rectangle { Layout.fillWidth: true; visible: dose.expanded; implicitHeight: 1; color: Theme.separator }
            ActionRow {
                Layout.fillWidth: true
                visible: dose.expanded
                actions: Sample.rows([{ id: "take", title: "Take", symbol: "checkmark" },
                    { id: "snooze", title: "Snooze", symbol: "clock.arrow.circlepath" }, { id: "skip", title: "Skip", symbol: "forward.fill" }])
            }
        }
    }

    Column {
        width: parent.width
        spacing: 16

        RowLayout {
            width: parent.width

            ColumnLayout {
                spacing: 2

                Label { Layout.fillWidth: true; text: "Good Morning"; size: Theme.title2; font.weight: Font.Bold }
                Label { Layout.fillWidth: true; text: "Friday, January 10, 2025"; color: Theme.secondary; size: Theme.subheadline }
            }
            ProgressRing { value: 0.66; text: "66%"; tone: "blue" }
        }
        RowLayout {
            width: parent.width
            spacing: 8

            StatBadge { Layout.fillWidth: true; Layout.preferredWidth: 10; symbol: "checkmark.circle.fill"; value: "2"; label: "Taken"; tone: "green" }
            StatBadge { Layout.fillWidth: true; Layout.preferredWidth: 10; symbol: "clock.fill"; value: "1"; label: "Remaining"; tone: "blue" }
            StatBadge { Layout.fillWidth: true; Layout.preferredWidth: 10; symbol: "forward.circle.fill"; value: "0"; label: "Skipped"; tone: "orange" }
        }
    }
    Column {
        width: parent.width
        spacing: 12

        Label { width: parent.width; text: "Today's Medicines"; size: Theme.title3; font.weight: Font.DemiBold }
        Dose { name: "Aspirin"; dosage: "100 mg"; symbol: "pills"; tone: "blue"; time: "8:00 AM"; countdown: "Overdue"; countdownTone: "red"; expanded: true }
        Dose { name: "Vitamin D with a name that is long"; dosage: "5 drops"; symbol: "drop"; tone: "yellow"; time: "9:00 AM"; countdown: "In 48 min"; countdownTone: "green" }
    }
    ListSection {
        header: "Activity"

        ListRow {
            id: log

            separated: false
            text: "Ibuprofen"
            detail: "7:30 AM"
            symbol: "checkmark.circle.fill"
            symbolColor: Theme.symbol("green")
            width: parent.width

            Row {
                spacing: 4

                Badge { anchors.verticalCenter: parent.verticalCenter; text: "12m late"; tone: "orange" }
                IconButton { symbol: "arrow.uturn.backward"; symbolSize: 20; text: "Undo" }
            }
        }
    }
}
