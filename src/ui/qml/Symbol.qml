// SPDX-License-Identifier: MIT
import QtQuick
import Pillora

// A symbol of the given size. Those that point somewhere along the text point the other way in a mirrored window.
SymbolImage {
    id: symbol

    property real size: Theme.body
    readonly property bool points: /^(chevron\.(left|right)|arrow\.(left|right|uturn)|list\.|forward|text\.)/.test(name)

    color: Theme.text
    flipped: Theme.mirrored && points
    implicitWidth: size
    implicitHeight: size
}
