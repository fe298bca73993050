// SPDX-License-Identifier: MIT
import QtQuick
import Pillora
import Pillora.Samples

QtObject {
    default property list<Specimen> specimens: [
        Specimen {
            title: "PButton, prominent"
            width: 200
            PButton { kind: "prominent"; text: "Add Medicine"; symbol: "plus" }
        },
        Specimen {
            title: "PButton, bordered"
            width: 200
            PButton { text: "Snooze"; symbol: "clock.arrow.circlepath" }
        },
        Specimen {
            title: "PButton, bordered in green, compact"
            width: 200
            PButton { text: "Take"; symbol: "checkmark"; tone: "green"; compact: true }
        },
        Specimen {
            title: "PButton, destructive"
            width: 200
            PButton { kind: "prominent"; text: "Delete"; tone: "red" }
        },
        Specimen {
            title: "PButton, plain"
            width: 200
            PButton { kind: "plain"; text: "Cancel" }
        },
        Specimen {
            title: "PButton, long text"
            width: 200
            PButton { width: 200; kind: "prominent"; text: "Erinnerungseinstellungen übernehmen"; symbol: "checkmark" }
        },
        Specimen {
            title: "IconButton"
            width: 44
            IconButton { symbol: "plus.circle.fill"; text: "Add" }
        },
        Specimen {
            title: "IconButton, solid"
            width: 44
            IconButton { symbol: "checkmark"; kind: "solid"; tone: "green"; text: "Take" }
        },
        Specimen {
            title: "IconButton, tinted"
            width: 44
            IconButton { symbol: "forward.fill"; kind: "tinted"; tone: "orange"; text: "Skip" }
        },
        Specimen {
            title: "Toggle, on"
            width: 52
            Toggle { isOn: true; text: "Active" }
        },
        Specimen {
            title: "Toggle, off"
            width: 52
            Toggle { isOn: false; text: "Active" }
        },
        Specimen {
            title: "Stepper"
            width: 104
            Stepper { name: "Duration"; canDecrement: true; canIncrement: true }
        },
        Specimen {
            title: "Stepper at its end"
            width: 104
            Stepper { name: "Duration"; canDecrement: false; canIncrement: true }
        },
        Specimen {
            title: "SegmentedPicker"
            SegmentedPicker {
                name: "Time Range"
                options: Sample.rows([{ id: "a", title: "Today", isSelected: false }, { id: "b", title: "Week", isSelected: true },
                    { id: "c", title: "Month", isSelected: false }, { id: "d", title: "All", isSelected: false }])
            }
        },
        Specimen {
            title: "Chip"
            width: 120
            Chip { isSelected: false; text: "Taken"; symbol: "checkmark.circle.fill"; tone: "green" }
        },
        Specimen {
            title: "Chip, selected"
            width: 120
            Chip { isSelected: true; text: "Skipped"; symbol: "forward.circle.fill"; tone: "orange" }
        },
        Specimen {
            title: "SearchField"
            width: 260
            SearchField { width: 260; name: "Search medicines" }
        },
        Specimen {
            title: "SearchField, filled"
            width: 260
            SearchField { width: 260; name: "Search medicines"; shown: "Aspirin"; clearName: "Clear" }
        },
        Specimen {
            title: "Swatch"
            width: 44
            Swatch { color: "teal"; isSelected: false; text: "teal" }
        },
        Specimen {
            title: "Swatch, selected"
            width: 44
            Swatch { color: "teal"; isSelected: true; text: "teal" }
        },
        Specimen {
            title: "IconCell"
            width: 44
            IconCell { symbol: "pills"; isSelected: false; text: "pills" }
        },
        Specimen {
            title: "IconCell, selected"
            width: 44
            IconCell { symbol: "pills"; isSelected: true; tone: "purple"; text: "pills" }
        },
        Specimen {
            title: "DayButton"
            width: 36
            DayButton { text: "Mon" }
        },
        Specimen {
            title: "DayButton, selected"
            width: 36
            DayButton { text: "Wed"; isSelected: true }
        },
        Specimen {
            title: "DayButton, today"
            width: 36
            DayButton { text: "21"; isToday: true }
        }
    ]
}
