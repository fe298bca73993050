// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Pillora

// The month to pick a day from, over the form that asked. `month` is the open sheet's content, or null.
ModalCard {
    id: dialog

    required property FormModel form
    required property var month
    property var last: null

    onMonthChanged: if (month)
        last = month
    shown: month !== null
    name: last?.title ?? ""
    width: Math.min(360, roomWide - 32)
    padding: 12
    onDismissed: form.closeSheet()

    Optional {
        when: dialog.last !== null

        MonthView {
            width: parent ? parent.width : implicitWidth
            focus: true
            month: dialog.last
            onPicked: day => {
                dialog.form.pickDay(day)
                dialog.form.closeSheet()
            }
            onWentBack: dialog.form.showPreviousMonth()
            onWentForward: dialog.form.showNextMonth()
        }
    }
}
