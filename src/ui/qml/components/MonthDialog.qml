// SPDX-License-Identifier: MIT
import QtQuick
import Pillora
import QtQuick.Templates as T

// The month to pick a day from, over the form that asked. `month` is the open sheet's content, or null.
T.Popup {
    id: dialog

    required property FormModel form
    required property var month
    property var last: null

    parent: T.Overlay.overlay
    width: Math.min(360, (parent ? parent.width : 360) - 32)
    x: parent ? (parent.width - width) / 2 : 0
    y: parent ? (parent.height - height) / 2 : 0
    padding: 12
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside

    onMonthChanged: {
        if (month)
            last = month
        month ? open() : close()
    }
    onClosed: form.closeSheet()

    T.Overlay.modal: Rectangle {
        color: Theme.backdrop
    }
    background: Rectangle {
        radius: Theme.radiusSheet
        color: Theme.raised

        Shadow {
            z: -1
            radius: parent.radius
        }
    }
    contentItem: Loader {
        active: dialog.last !== null
        focus: true

        sourceComponent: MonthView {
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
