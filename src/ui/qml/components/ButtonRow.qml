// SPDX-License-Identifier: MIT
import QtQuick

// An action as a row. `row`: title, symbol, isDestructive.
ListRow {
    required property var row
    readonly property string tone: row.isDestructive ? "red" : "blue"

    width: parent ? parent.width : implicitWidth
    interactive: true
    text: row.title
    symbol: row.symbol ?? ""
    tint: Theme.ink(tone)
    symbolColor: Theme.symbol(tone)
}
