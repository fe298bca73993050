// SPDX-License-Identifier: MIT
import QtQuick

// A time of day on two drums. `hours` and `minutes` are rows with `value`, `text` and `isSelected`; their texts carry
// morning and afternoon where the person's clock has them.
Row {
    id: picker

    required property var hours
    required property var minutes
    required property string hoursName
    required property string minutesName
    signal hourPicked(int hour)
    signal minutePicked(int minute)

    spacing: 12
    // A clock reads from left to right everywhere.
    LayoutMirroring.enabled: false

    Wheel {
        id: hourWheel

        focus: true
        width: 108
        cells: picker.hours
        name: picker.hoursName
        onPicked: value => picker.hourPicked(value)
        Keys.onRightPressed: minuteWheel.forceActiveFocus(Qt.TabFocusReason)
    }
    Wheel {
        id: minuteWheel

        width: 108
        cells: picker.minutes
        name: picker.minutesName
        onPicked: value => picker.minutePicked(value)
        Keys.onLeftPressed: hourWheel.forceActiveFocus(Qt.TabFocusReason)
    }
}
