// SPDX-License-Identifier: MIT
import QtQuick

// What stands above the rows of a section.
Label {
    x: Theme.padding
    width: parent ? parent.width - 2 * Theme.padding : implicitWidth
    visible: text !== ""
    color: Theme.secondary
    size: Theme.footnote
    font.weight: Font.DemiBold
    font.letterSpacing: 0.2
    Accessible.role: Accessible.Heading
}
