// SPDX-License-Identifier: MIT
import QtQuick
import Pillora
import Pillora.Samples

FormPage {
    id: page

    MenuPopup {
        id: menu

        name: "Frequency"
        parent: page
        y: 200
        x: page.width - width - 24
        selected: "c"
        items: Sample.rows([{ id: "a", title: "Hourly", symbol: "clock", isDestructive: false }, { id: "b", title: "Daily", symbol: "sun.max", isDestructive: false },
            { id: "c", title: "Weekly", symbol: "calendar.badge.clock", isDestructive: false }, { id: "d", title: "Monthly", symbol: "calendar", isDestructive: false },
            { id: "e", title: "Custom", symbol: "slider.horizontal.3", isDestructive: false }])
    }
    Component.onCompleted: Qt.callLater(menu.open)
}
