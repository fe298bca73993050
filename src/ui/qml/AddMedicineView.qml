// SPDX-License-Identifier: MIT
import QtQuick
import Pillora

// The form of a new medicine, as a sheet. See screens/AddMedicineView.h.
Sheet {
    id: sheet

    required property AddMedicineModel model
    readonly property var form: model.content

    shown: model.isOpen
    title: form.title
    toolbar: form.toolbar
    onTriggered: id => model.press(id)
    onDismissed: model.press("cancel")

    ScrollArea {
        anchors.fill: parent

        FormSections {
            form: sheet.model
            sections: sheet.form.sections
        }
    }
    MonthDialog {
        form: sheet.model
        month: sheet.shown ? sheet.form.monthSheet : null
    }
    TimeDialog {
        form: sheet.model
        time: sheet.shown ? sheet.form.timeSheet : null
    }
}
