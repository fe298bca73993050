// SPDX-License-Identifier: MIT
import QtQuick
import Pillora
import QtQuick.Templates as T

// The drums to pick a time of day from, over the form that asked. `time` is the open sheet's content, or null.
T.Popup {
    id: dialog

    required property FormModel form
    required property var time
    property var last: null

    parent: T.Overlay.overlay
    width: Math.min(320, (parent ? parent.width : 360) - 32)
    x: parent ? (parent.width - width) / 2 : 0
    y: parent ? (parent.height - height) / 2 : 0
    padding: 16
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside

    onTimeChanged: {
        if (time)
            last = time
        time ? open() : close()
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
    contentItem: Column {
        spacing: 8

        Label {
            width: parent.width
            text: dialog.last?.title ?? ""
            horizontalAlignment: Text.AlignHCenter
            size: Theme.headline
            font.weight: Font.DemiBold
            Accessible.role: Accessible.Heading
        }
        Loader {
            anchors.horizontalCenter: parent.horizontalCenter
            active: dialog.last !== null
            focus: true

            sourceComponent: TimePicker {
                focus: true
                hours: dialog.last.hours
                minutes: dialog.last.minutes
                onHourPicked: hour => dialog.form.pickHour(hour)
                onMinutePicked: minute => dialog.form.pickMinute(minute)
            }
        }
    }
}
