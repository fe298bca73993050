// SPDX-License-Identifier: MIT
import QtQuick

// A text exactly as given: never markup. Wraps where it has a width.
Text {
    property real size: Theme.body

    textFormat: Text.PlainText
    wrapMode: Text.Wrap
    horizontalAlignment: Text.AlignLeft
    color: Theme.text
    font.family: Theme.fontFamily
    font.pixelSize: size
    font.letterSpacing: size >= 20 ? -0.018 * size : 0

    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
