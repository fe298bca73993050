// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Pillora

// One section of a form by itself; nothing while there is none.
ListSection {
    id: control

    required property FormModel form
    required property var section

    visible: section !== null
    header: section?.title ?? ""
    footer: section?.footer ?? ""

    Repeater {
        model: control.section?.rows ?? null

        FormRow {
            form: control.form
        }
    }
}
