// SPDX-License-Identifier: MIT
import QtQuick
import Pillora
import Pillora.Samples

QtObject {
    default property list<Specimen> specimens: [
        Specimen {
            title: "ValueRow"
            onSurface: true
            states: "normal"
            ValueRow { width: 328; row: Sample.object({ label: "Version", text: "1.0", detail: null, symbol: null, color: null }) }
        },
        Specimen {
            title: "ValueRow, with symbol"
            onSurface: true
            states: "normal"
            ValueRow { width: 328; row: Sample.object({ label: "Status", text: "Enabled", detail: null, symbol: "checkmark.circle.fill", color: "green" }) }
        },
        Specimen {
            title: "ValueRow, with detail"
            onSurface: true
            states: "normal"
            ValueRow { width: 328; row: Sample.object({ label: "Next Dose", text: "8:00 PM", detail: "in 2 hr.", symbol: null, color: null }) }
        },
        Specimen {
            title: "ValueRow, text alone"
            onSurface: true
            states: "normal"
            ValueRow { width: 328; row: Sample.object({ label: null, text: "Take with a full glass of water, never on an empty stomach.", detail: null, symbol: null, color: null }) }
        },
        Specimen {
            title: "ValueRow, too long for one line"
            onSurface: true
            states: "normal"
            ValueRow { width: 328; row: Sample.object({ label: "Wiederholungsintervall", text: "Alle vierundzwanzig Stunden", detail: null, symbol: null, color: null }) }
        },
        Specimen {
            title: "ToggleRow"
            onSurface: true
            ToggleRow { width: 328; row: Sample.object({ label: "Allow Snooze", isOn: true }) }
        },
        Specimen {
            title: "StepperRow"
            onSurface: true
            StepperRow { width: 328; row: Sample.object({ label: "Duration: 10 min", value: 10, canDecrement: true, canIncrement: true }) }
        },
        Specimen {
            title: "PickerRow"
            onSurface: true
            PickerRow { width: 328; row: Sample.object({ label: "Frequency", selected: "a", valueText: "Daily", options: [{ id: "a", title: "Daily", symbol: "sun.max" }] }) }
        },
        Specimen {
            title: "ButtonRow"
            onSurface: true
            ButtonRow { width: 328; row: Sample.object({ title: "Add Time", symbol: "plus.circle.fill", isDestructive: false }) }
        },
        Specimen {
            title: "ButtonRow, destructive"
            onSurface: true
            ButtonRow { width: 328; row: Sample.object({ title: "Delete Medicine", symbol: null, isDestructive: true }) }
        },
        Specimen {
            title: "LinkRow"
            onSurface: true
            LinkRow { width: 328; text: "Privacy Policy"; mark: "arrow.up.right.square" }
        },
        Specimen {
            title: "TextFieldRow"
            onSurface: true
            states: "normal focused disabled"
            TextFieldRow { width: 328; row: Sample.object({ label: "Medicine Name", text: "", keypad: "text", style: "body" }) }
        },
        Specimen {
            title: "TextFieldRow, large"
            onSurface: true
            states: "normal focused disabled"
            TextFieldRow { width: 328; row: Sample.object({ label: "Name", text: "Aspirin", keypad: "text", style: "title" }) }
        },
        Specimen {
            title: "TabItem"
            width: 72
            onSurface: true
            TabItem { width: 72; height: 58; isSelected: false; row: Sample.object({ title: "Today", symbol: "sun.max" }) }
        },
        Specimen {
            title: "TabItem, selected"
            width: 72
            onSurface: true
            TabItem { width: 72; height: 58; isSelected: true; row: Sample.object({ title: "Medicines", symbol: "pills" }) }
        },
        Specimen {
            title: "TabItem of the rail"
            width: 192
            onSurface: true
            TabItem { width: 192; height: 48; wide: true; isSelected: false; row: Sample.object({ title: "Upcoming", symbol: "calendar.badge.clock" }) }
        },
        Specimen {
            title: "TabItem of the rail, selected"
            width: 192
            onSurface: true
            TabItem { width: 192; height: 48; wide: true; isSelected: true; row: Sample.object({ title: "History", symbol: "clock.arrow.circlepath" }) }
        }
    ]
}
