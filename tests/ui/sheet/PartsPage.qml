// SPDX-License-Identifier: MIT
import QtQuick
import Pillora
import Pillora.Samples

// What stands alone: the panel of an empty screen, the month, the time, the spinner.
Rectangle {
    color: Theme.background
    LayoutMirroring.enabled: Theme.mirrored
    LayoutMirroring.childrenInherit: true

    ScrollArea {
        anchors.fill: parent

        Card {
            width: parent.width

            MonthView {
                width: parent.width
                month: Sample.object({
                    title: "January 2025", previous: { id: "previous", title: "Previous Month", symbol: "chevron.left" },
                    next: { id: "next", title: "Next Month", symbol: "chevron.right" },
                    weekdays: ["Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"],
                    weeks: [0, 1, 2, 3, 4].map(week => ({ cells: [0, 1, 2, 3, 4, 5, 6].map(day => {
                        const number = week * 7 + day - 2
                        return { id: String(number), text: String(number < 1 ? 31 + number : number > 31 ? number - 31 : number), label: "January " + number,
                            isToday: number === 10, isSelected: number === 15, isInMonth: number > 0 && number < 32 }
                    }) }))
                })
            }
        }
        Card {
            width: parent.width

            TimePicker {
                anchors.horizontalCenter: parent.horizontalCenter
                hours: Sample.rows(Array.from({ length: 24 }, (_, hour) => (
                    { value: hour, text: (hour % 12 || 12) + (hour < 12 ? " AM" : " PM"), isSelected: hour === 9 })))
                minutes: Sample.rows(Array.from({ length: 60 }, (_, minute) => (
                    { value: minute, text: String(minute).padStart(2, "0"), isSelected: minute === 30 })))
                hoursName: "Hour"
                minutesName: "Minute"
            }
        }
        EmptyState {
            anchors.horizontalCenter: parent.horizontalCenter
            symbol: "pills.circle"
            title: "No Medicines Added"
            text: "Add your first medicine to start tracking your reminders."
            action: "Add Medicine"
            actionSymbol: "plus"
        }
        ProgressSpinner {
            anchors.horizontalCenter: parent.horizontalCenter
        }
    }
}
