// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts

// A button with a word: "prominent" for what a screen is for, "bordered" beside it, "plain" for what is seldom wanted.
Pressable {
    id: control

    property string kind: "bordered"
    property string symbol: ""
    property string tone: "blue"
    property bool compact: false
    property bool bold: kind !== "plain"
    property real sidePadding: kind === "plain" ? 10 : compact ? 14 : 20
    readonly property real endPadding: compact ? 8 : 11
    readonly property color inkColor: kind === "prominent" ? Theme.onSolid : Theme.ink(tone)

    implicitWidth: Math.max(Theme.touch, row.implicitWidth + 2 * sidePadding)
    implicitHeight: Math.max(Theme.touch, row.implicitHeight + 2 * endPadding)

    Rectangle {
        anchors.fill: parent
        radius: control.cornerRadius
        color: control.kind === "prominent" ? Theme.solid(control.tone)
            : control.kind === "plain" ? "transparent" : Theme.tint(control.tone)

        PressTint {
            anchors.fill: parent
            radius: parent.radius
            over: control
        }
    }
    RowLayout {
        id: row

        anchors.centerIn: parent
        width: Math.min(implicitWidth, parent.width - 2 * control.sidePadding)
        spacing: control.compact ? 5 : 7

        Symbol {
            visible: control.symbol !== ""
            name: control.symbol
            size: (control.compact ? Theme.subheadline : Theme.headline) * 1.12
            color: control.inkColor
        }
        Label {
            Layout.fillWidth: true
            text: control.text
            color: control.inkColor
            horizontalAlignment: Text.AlignHCenter
            size: control.compact ? Theme.subheadline : Theme.headline
            font.weight: control.bold ? Font.DemiBold : Font.Medium
            Accessible.ignored: true
        }
    }
}
