// SPDX-License-Identifier: MIT
import QtQuick
import Pillora
import Pillora.Samples

// Every row that a form can have.
Rectangle {
    id: page

    color: Theme.background
    LayoutMirroring.enabled: Theme.mirrored
    LayoutMirroring.childrenInherit: true

    NavigationBar {
        id: bar

        width: parent.width
        title: "Add Medicine"
        toolbar: Sample.rows([{ id: "cancel", slot: "cancellation", title: "Cancel", symbol: null, isEnabled: true, isSemibold: false, menu: [] },
            { id: "save", slot: "confirmation", title: "Save", symbol: null, isEnabled: true, isSemibold: true, menu: [] }])
    }
    ScrollArea {
        anchors.top: bar.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        contentY: page.objectName === "end" ? 700 : 0

        ListSection {
            header: "Basic Information"

            TextFieldRow { row: Sample.object({ label: "Medicine Name", text: "", keypad: "text", style: "body" }) }
            PickerRow { row: Sample.object({ label: "Unit", selected: "pill", valueText: "pill", options: [] }) }
        }
        ListSection {
            header: "Appearance"

            GridRow {
                row: Sample.object({ label: "Color", style: "swatches", columns: 5, spacing: 12, cellSize: 44,
                    cells: ["blue", "green", "red", "orange", "purple", "pink", "yellow", "teal", "indigo", "mint"].map((name, at) => (
                        { id: name, title: name, symbol: null, color: name, isSelected: at === 4 })) })
            }
            GridRow {
                row: Sample.object({ label: "Icon", style: "icons", columns: 5, spacing: 12, cellSize: 44,
                    cells: ["pills", "pill.circle", "cross.case", "heart", "drop", "leaf", "bolt", "moon", "sun.max", "sparkles", "syringe", "syringe.fill"].map((name, at) => (
                        { id: name, title: name, symbol: name, color: at === 0 ? "purple" : "grey", isSelected: at === 0 })) })
            }
        }
        ListSection {
            header: "Schedule"
            footer: "Inactive medicines won't trigger reminders."

            PickerRow { row: Sample.object({ label: "Frequency", selected: "a", valueText: "Weekly", options: [] }) }
            GridRow {
                row: Sample.object({ label: "Days", style: "days", columns: 7, spacing: 8, cellSize: 36,
                    cells: ["Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"].map((name, at) => (
                        { id: name, title: name, symbol: null, color: null, isSelected: at > 0 && at < 6 })) })
            }
            StepperRow { row: Sample.object({ label: "Snooze Duration: 10 min", value: 10, canDecrement: true, canIncrement: true }) }
            ToggleRow { row: Sample.object({ label: "Active", isOn: true }) }
            ValueRow { row: Sample.object({ label: "Next Dose", text: "8:00 PM", detail: "in 2 hr.", symbol: null, color: null }) }
            ButtonRow { row: Sample.object({ title: "Add Time", symbol: "plus.circle.fill", isDestructive: false }) }
            LinkRow { text: "Privacy Policy"; mark: "arrow.up.right.square" }
            ButtonRow { row: Sample.object({ title: "Delete Medicine", symbol: "trash", isDestructive: true }) }
        }
    }
}
