// SPDX-License-Identifier: MIT
import QtQuick

// A button of a toolbar: a symbol alone, or a word. `row`: title, symbol, isEnabled, isSemibold, menu.
Loader {
    id: control

    required property var row
    signal triggered(string id)

    readonly property bool hasMenu: !!row.menu && row.menu.count > 0

    function press() {
        hasMenu ? menu.open() : triggered(row.id)
    }

    sourceComponent: row.symbol ? icon : word

    Component {
        id: icon

        IconButton {
            symbol: control.row.symbol
            symbolSize: 26
            text: control.row.title
            enabled: control.row.isEnabled ?? true
            onClicked: control.press()
        }
    }
    Component {
        id: word

        PButton {
            kind: "plain"
            text: control.row.title
            bold: control.row.isSemibold ?? false
            enabled: control.row.isEnabled ?? true
            onClicked: control.press()
        }
    }
    MenuPopup {
        id: menu

        parent: control
        atEnd: true
        items: control.row.menu ?? null
        onPicked: id => control.triggered(id)
    }
}
