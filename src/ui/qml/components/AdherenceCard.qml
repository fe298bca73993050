// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts

// How reliably doses were taken. `adherence`: ring, percentText, percentSign, title, message, color.
Card {
    id: card

    required property var adherence

    RowLayout {
        width: parent.width
        spacing: 16

        ProgressRing {
            value: card.adherence.ring
            text: card.adherence.percentText
            suffix: card.adherence.percentSign
            tone: card.adherence.color
            trackTone: "grey"
            diameter: 80
            lineWidth: 8
        }
        ColumnLayout {
            spacing: 2

            Label {
                Layout.fillWidth: true
                text: card.adherence.title
                color: Theme.secondary
                size: Theme.subheadline
            }
            Label {
                Layout.fillWidth: true
                text: card.adherence.message
                size: Theme.title3
                font.weight: Font.Bold
            }
        }
    }
}
