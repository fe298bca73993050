// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick

// A button of a toolbar: a symbol alone, or a word. `row`: title, symbol, isEnabled, isSemibold, menu.
Item {
    id: control

    required property var row
    readonly property bool hasMenu: !!row.menu && row.menu.count > 0
    signal triggered(string id)

    function press() {
        hasMenu ? menu.open() : triggered(row.id)
    }

    implicitWidth: childrenRect.width
    implicitHeight: childrenRect.height

    Optional {
        when: !!control.row.symbol

        IconButton {
            symbol: control.row.symbol
            symbolSize: 26
            text: control.row.title
            enabled: control.row.isEnabled ?? true
            onClicked: control.press()
        }
    }
    Optional {
        when: !control.row.symbol

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
        name: control.row.title
        items: control.row.menu ?? null
        onPicked: id => control.triggered(id)
    }
}
