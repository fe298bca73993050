// SPDX-License-Identifier: MIT
import QtQuick

// A round day: a weekday, a day of the month, a day of a month's sheet. A long word has a wider ground.
Checkable {
    id: control

    property bool isToday: false
    property bool isFaint: false
    property bool filled: true
    property real diameter: 36
    readonly property bool wide: text.length > 4

    isSelected: false
    implicitWidth: diameter
    implicitHeight: diameter
    cornerRadius: wide ? diameter / 3 : diameter / 2
    focusTarget: disc

    voice: Accessible.CheckBox

    Rectangle {
        id: disc

        anchors.centerIn: parent
        width: control.wide ? Math.max(control.diameter, control.width - 2) : control.diameter
        height: control.diameter
        radius: control.cornerRadius
        color: control.isSelected ? Theme.solid("blue") : control.filled ? Theme.field : "transparent"
        border.width: control.isToday && !control.isSelected ? 1.5 : 0
        border.color: Theme.accent

        PressTint {
            anchors.fill: parent
            radius: parent.radius
            over: control
        }
    }
    Label {
        anchors.fill: parent
        text: control.text
        wrapMode: Text.NoWrap
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 9
        leftPadding: 3
        rightPadding: 3
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        size: Math.min(Theme.subheadline, control.diameter * (text.length > 2 ? 0.36 : 0.46))
        font.weight: control.isSelected || control.isToday ? Font.DemiBold : Font.Medium
        color: control.isSelected ? Theme.onSolid : control.isToday ? Theme.accent
            : control.isFaint ? Theme.placeholder : Theme.text
        Accessible.ignored: true
    }
}
