// SPDX-License-Identifier: MIT
import QtQuick

// A medicine's symbol on a pale circle of its colour.
Rectangle {
    id: icon

    required property string symbol
    required property string tone
    property real diameter: Math.max(44, 1.6 * symbolSize)
    property real symbolSize: 24

    implicitWidth: diameter
    implicitHeight: diameter
    radius: diameter / 2
    color: Theme.tint(tone)

    Symbol {
        anchors.centerIn: parent
        visible: icon.symbol !== ""
        name: icon.symbol
        size: icon.symbolSize
        color: Theme.symbol(icon.tone)
    }
}
