// SPDX-License-Identifier: MIT
import QtQuick
import Pillora
import QtQuick.Layouts

// The day: how far it has come, the doses that are open, and what was logged. See screens/TodayView.h. Deliberate: no
// bound components here, see ReminderHistoryView.qml.
TabPage {
    id: screen

    required property AppModel app
    required property TodayModel model
    readonly property var today: model.content
    property var undoing: null

    title: today.title
    toolbar: today.toolbar
    onTriggered: app.addMedicine.open()

    LongList {
        id: list

        anchors.fill: parent
        visible: screen.today.empty === null
        focus: screen.today.empty === null
        model: screen.today.activity

        // qmllint disable unqualified
        header: Column {
            x: list.columnX
            width: list.columnWidth
            topPadding: 8
            spacing: 24

            RowLayout {
                width: parent.width
                visible: screen.today.progress !== null
                spacing: 12

                ColumnLayout {
                    spacing: 2

                    Label {
                        Layout.fillWidth: true
                        text: screen.today.greeting ?? ""
                        size: Theme.title2
                        font.weight: Font.Bold
                        Accessible.role: Accessible.Heading
                    }
                    Label {
                        Layout.fillWidth: true
                        text: screen.today.date ?? ""
                        color: Theme.secondary
                        size: Theme.subheadline
                    }
                }
                ProgressRing {
                    value: screen.today.progress?.value ?? 0
                    text: screen.today.progress?.text ?? ""
                    tone: screen.today.progress?.color ?? "blue"
                }
            }
            RowLayout {
                width: parent.width
                visible: badges.count > 0
                spacing: 8

                Repeater {
                    id: badges

                    model: screen.today.badges

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
            Column {
                width: parent.width
                spacing: 12

                Label {
                    width: parent.width
                    visible: text !== ""
                    text: screen.today.dosesTitle ?? ""
                    size: Theme.title3
                    font.weight: Font.DemiBold
                    Accessible.role: Accessible.Heading
                }
                Repeater {
                    model: screen.today.doses

                    DoseCard {
                        required property var row

                        width: parent ? parent.width : implicitWidth
                        name: row.name
                        dosage: row.dosageText
                        icon: row.icon
                        tone: row.color
                        time: row.timeText
                        badge: row.countdown
                        badgeTone: row.countdownColor
                        actions: row.actions
                        onActed: id => {
                            if (id === "take")
                                screen.model.take(row.medicineId, row.time)
                            else if (id === "skip")
                                screen.model.skip(row.medicineId, row.time)
                            else
                                screen.model.snooze(row.medicineId)
                        }
                    }
                }
                EmptyState {
                    anchors.horizontalCenter: parent.horizontalCenter
                    topPadding: 16
                    bottomPadding: 16
                    visible: screen.today.message !== null
                    symbol: screen.today.message?.symbol ?? "checkmark.circle.fill"
                    title: screen.today.message?.title ?? ""
                    text: screen.today.message?.text ?? ""
                    tone: "green"
                }
            }
            SectionHeading {
                bottomPadding: 8
                visible: text !== "" && list.count > 0
                text: screen.today.activityTitle ?? ""
            }
        }
        delegate: CardSlice {
            id: entry

            required property var row
            required property int index

            x: list.columnX
            width: list.columnWidth
            first: index === 0
            last: index === list.count - 1

            LogRow {
                row: entry.row
                separated: !entry.first
                onUndone: screen.undoing = row
            }
        }
    }
    EmptyState {
        anchors.centerIn: parent
        visible: screen.today.empty !== null
        symbol: screen.today.empty?.symbol ?? "pills"
        title: screen.today.empty?.title ?? ""
        text: screen.today.empty?.text ?? ""
        action: screen.today.emptyAction?.title ?? ""
        actionSymbol: screen.today.emptyAction?.symbol ?? ""
        onTriggered: screen.app.addMedicine.open()
    }
    AlertDialog {
        shown: screen.undoing !== null
        title: screen.undoing?.undoAlert.title ?? ""
        message: screen.undoing?.undoAlert.message ?? ""
        cancel: screen.undoing?.undoAlert.cancel ?? ""
        confirm: screen.undoing?.undoAlert.confirm ?? ""
        isDestructive: true
        onCancelled: screen.undoing = null
        onConfirmed: {
            screen.model.undo(screen.undoing.id)
            screen.undoing = null
        }
    }
}
