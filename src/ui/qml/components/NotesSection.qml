// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Pillora

// One section of a form by itself.
ListSection {
    id: control

    required property FormModel form
    required property var section

    header: section.title ?? ""
    footer: section.footer ?? ""

    Repeater {
        model: control.section.rows

        FormRow {
            form: control.form
        }
    }
}
