// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Pillora

// The sections of a form, one below the other. `sections` are rows with `title`, `rows` and `footer`.
Repeater {
    id: repeater

    required property FormModel form
    required property var sections

    model: sections

    ListSection {
        id: section

        required property var row

        header: row.title ?? ""
        footer: row.footer ?? ""

        Repeater {
            model: section.row.rows

            FormRow {
                form: repeater.form
            }
        }
    }
}
