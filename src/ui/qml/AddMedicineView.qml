// SPDX-License-Identifier: MIT
import QtQuick
import Pillora

// The form of a new medicine, as a sheet. See screens/AddMedicineView.h.
Item {
    id: screen

    required property AddMedicineModel model
    readonly property var form: model.content

    Sheet {
        id: sheet

        shown: screen.model.isOpen
        title: screen.form.title
        toolbar: screen.form.toolbar
        onTriggered: id => screen.model.press(id)
        onDismissed: screen.model.press("cancel")
        onOpened: page.nextItemInFocusChain().forceActiveFocus(Qt.OtherFocusReason)

        ScrollArea {
            id: page

            anchors.fill: parent

            FormSections {
                form: screen.model
                sections: screen.form.sections
            }
        }
        MonthDialog {
            form: screen.model
            month: sheet.shown ? screen.form.monthSheet : null
        }
        TimeDialog {
            form: screen.model
            time: sheet.shown ? screen.form.timeSheet : null
        }
    }
}
