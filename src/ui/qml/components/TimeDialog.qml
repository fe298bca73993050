// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Pillora

// The drums to pick a time of day from, over the form that asked. `time` is the open sheet's content, or null.
ModalCard {
    id: dialog

    required property FormModel form
    required property var time
    property var last: null

    onTimeChanged: if (time)
        last = time
    shown: time !== null
    name: last?.title ?? ""
    width: Math.min(320, roomWide - 32)
    padding: 16
    onDismissed: form.closeSheet()

    Label {
        width: parent.width
        text: dialog.name
        horizontalAlignment: Text.AlignHCenter
        size: Theme.headline
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
    }
    Optional {
        when: dialog.last !== null

        TimePicker {
            anchors.horizontalCenter: parent?.horizontalCenter
            hours: dialog.last.hours
            minutes: dialog.last.minutes
            hoursName: dialog.last.hoursName
            minutesName: dialog.last.minutesName
            onHourPicked: hour => dialog.form.pickHour(hour)
            onMinutePicked: minute => dialog.form.pickMinute(minute)
        }
    }
    PButton {
        width: parent.width
        text: dialog.last?.done ?? ""
        onClicked: dialog.form.closeSheet()
    }
}
