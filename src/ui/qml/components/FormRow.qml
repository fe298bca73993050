// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Pillora

// A row of whatever kind, wired to the screen that it belongs to.
Item {
    id: place

    required property FormModel form
    required property var row
    required property string kind
    readonly property bool separated: !Positioner.isFirstItem

    width: parent ? parent.width : 0
    implicitHeight: childrenRect.height

    Optional {
        delegate: ({ textField: textField, toggle: toggle, stepper: stepper, picker: picker, grid: grid, date: date,
            time: time, value: value, button: button, link: link, header: header, dose: dose })[place.kind]
    }

    Component {
        id: textField

        TextFieldRow {
            row: place.row
            separated: place.separated
            onEdited: text => place.form.setText(place.row.id, text)
        }
    }
    Component {
        id: toggle

        ToggleRow {
            row: place.row
            separated: place.separated
            onEdited: isOn => place.form.setOn(place.row.id, isOn)
        }
    }
    Component {
        id: stepper

        StepperRow {
            row: place.row
            separated: place.separated
            onIncremented: place.form.increment(place.row.id)
            onDecremented: place.form.decrement(place.row.id)
        }
    }
    Component {
        id: picker

        PickerRow {
            row: place.row
            separated: place.separated
            onEdited: option => place.form.choose(place.row.id, option)
        }
    }
    Component {
        id: grid

        GridRow {
            row: place.row
            separated: place.separated
            onPicked: cell => place.form.choose(place.row.id, cell)
        }
    }
    Component {
        id: date

        ChoiceRow {
            label: place.row.label
            value: place.row.valueText
            separated: place.separated
            onClicked: place.form.openSheet(place.row.id)
        }
    }
    Component {
        id: time

        ChoiceRow {
            label: place.row.label
            value: place.row.valueText
            remove: place.row.remove
            separated: place.separated
            onClicked: place.form.openSheet(place.row.id)
            onRemoved: place.form.remove(place.row.id)
        }
    }
    Component {
        id: value

        ValueRow {
            row: place.row
            separated: place.separated
            onTriggered: id => place.form.press(id)
        }
    }
    Component {
        id: button

        ButtonRow {
            row: place.row
            separated: place.separated
            enabled: place.row.isEnabled
            onClicked: place.form.press(place.row.id)
        }
    }
    Component {
        id: link

        LinkRow {
            text: place.row.title
            mark: place.row.symbol
            separated: place.separated
            onClicked: place.form.press(place.row.id)
        }
    }
    Component {
        id: header

        HeaderRow {
            row: place.row
        }
    }
    Component {
        id: dose

        DoseRow {
            row: place.row
            separated: place.separated
        }
    }
}
