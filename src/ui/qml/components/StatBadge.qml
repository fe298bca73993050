// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts

// A figure with its symbol and word on a pale card of its colour. Several share a row evenly.
Rectangle {
    id: badge

    required property string symbol
    required property string value
    required property string label
    required property string tone

    // Deliberate: from the words and not from the column, which is as wide as the badge and would widen it for ever.
    implicitWidth: Math.max(96, number.implicitWidth + 28, caption.implicitWidth + 28)
    implicitHeight: column.implicitHeight + 20
    Layout.fillHeight: true
    radius: Theme.radius
    color: Qt.tint(Theme.surface, Theme.tint(tone))

    Accessible.role: Accessible.StaticText
    Accessible.name: value + " " + label

    Column {
        id: column

        anchors.centerIn: parent
        width: parent.width - 12
        spacing: 2

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: badge.symbol
            size: Theme.title3
            color: Theme.symbol(badge.tone)
        }
        Label {
            id: number

            width: parent.width
            text: badge.value
            horizontalAlignment: Text.AlignHCenter
            size: Theme.title3
            font.weight: Font.Bold
            Accessible.ignored: true
        }
        Label {
            id: caption

            width: parent.width
            text: badge.label
            wrapMode: Text.WordWrap
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 11
            horizontalAlignment: Text.AlignHCenter
            color: Theme.secondary
            size: Theme.caption2
            font.weight: Font.Medium
            Accessible.ignored: true
        }
    }
}
