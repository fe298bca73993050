// SPDX-License-Identifier: MIT
import QtQuick
import Pillora

// A row of whatever kind, wired to the screen that it belongs to.
Loader {
    id: loader

    required property FormModel form
    required property var row
    required property string kind
    readonly property bool separated: !Positioner.isFirstItem

    width: parent ? parent.width : 0
    sourceComponent: ({ textField: textField, toggle: toggle, stepper: stepper, picker: picker, grid: grid, date: date, time: time,
        value: value, button: button, link: link, header: header, dose: dose })[kind]

    Component {
        id: textField

        TextFieldRow {
            row: loader.row
            separated: loader.separated
            onEdited: text => loader.form.setText(loader.row.id, text)
        }
    }
    Component {
        id: toggle

        ToggleRow {
            row: loader.row
            separated: loader.separated
            onEdited: isOn => loader.form.setOn(loader.row.id, isOn)
        }
    }
    Component {
        id: stepper

        StepperRow {
            row: loader.row
            separated: loader.separated
            onIncremented: loader.form.increment(loader.row.id)
            onDecremented: loader.form.decrement(loader.row.id)
        }
    }
    Component {
        id: picker

        PickerRow {
            row: loader.row
            separated: loader.separated
            onEdited: option => loader.form.choose(loader.row.id, option)
        }
    }
    Component {
        id: grid

        GridRow {
            row: loader.row
            separated: loader.separated
            onPicked: cell => loader.form.choose(loader.row.id, cell)
        }
    }
    Component {
        id: date

        ChoiceRow {
            label: loader.row.label
            value: loader.row.valueText
            separated: loader.separated
            onClicked: loader.form.openSheet(loader.row.id)
        }
    }
    Component {
        id: time

        ChoiceRow {
            label: loader.row.label
            value: loader.row.valueText
            remove: loader.row.remove
            separated: loader.separated
            onClicked: loader.form.openSheet(loader.row.id)
            onRemoved: loader.form.remove(loader.row.id)
        }
    }
    Component {
        id: value

        ValueRow {
            row: loader.row
            separated: loader.separated
            onTriggered: id => loader.form.press(id)
        }
    }
    Component {
        id: button

        ButtonRow {
            row: loader.row
            separated: loader.separated
            enabled: loader.row.isEnabled
            onClicked: loader.form.press(loader.row.id)
        }
    }
    Component {
        id: link

        LinkRow {
            text: loader.row.title
            mark: loader.row.symbol
            separated: loader.separated
            onClicked: loader.form.press(loader.row.id)
        }
    }
    Component {
        id: header

        HeaderRow {
            row: loader.row
        }
    }
    Component {
        id: dose

        DoseRow {
            row: loader.row
            separated: loader.separated
        }
    }
}
