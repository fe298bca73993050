// SPDX-License-Identifier: MIT
import QtQuick
import Pillora

// All medicines, and over them the details of the one that is open. See screens/MedicineListView.h.
// Deliberate: no bound components here, see ReminderHistoryView.qml.
FocusScope {
    id: screen

    required property AppModel app
    required property MedicineListModel model
    readonly property var list: model.content

    TabPage {
        anchors.fill: parent
        focus: !details.visible
        visible: details.away > 0
        title: screen.list.title
        toolbar: screen.list.toolbar
        onTriggered: screen.app.addMedicine.open()

        LongList {
            id: rows

            anchors.fill: parent
            visible: screen.list.empty === null
            focus: screen.list.empty === null
            model: screen.list.sections

            // qmllint disable unqualified
            header: Item {
                x: rows.columnX
                width: rows.columnWidth
                implicitHeight: search.height + 32

                SearchField {
                    id: search

                    y: 8
                    width: parent.width
                    name: screen.list.searchPrompt
                    clearName: screen.list.clearSearch
                    shown: screen.list.searchText
                    onEdited: text => screen.model.search(text)

                    Shortcut {
                        enabled: screen.enabled && screen.list.empty === null && !details.visible
                        sequence: "Ctrl+F"
                        onActivated: search.forceActiveFocus(Qt.ShortcutFocusReason)
                    }
                }
            }
            delegate: Column {
                id: entry

                required property var row

                x: rows.columnX
                width: rows.columnWidth
                bottomPadding: row.isGroupsLast ? 24 : 0

                Optional {
                    when: entry.row.heading !== null

                    SectionHeading {
                        bottomPadding: 8
                        text: entry.row.heading?.title ?? ""
                    }
                }
                CardSlice {
                    width: parent.width
                    first: entry.row.heading !== null
                    last: entry.row.isGroupsLast

                    MedicineRow {
                        row: entry.row
                        separated: entry.row.heading === null
                        onOpened: screen.app.detail.open(row.id)
                        onRemoved: screen.model.deleteRow(row.group, row.id)
                    }
                }
            }
            // qmllint enable unqualified
        }
        EmptyState {
            anchors.centerIn: parent
            visible: screen.list.empty !== null
            symbol: screen.list.empty?.symbol ?? "pills"
            title: screen.list.empty?.title ?? ""
            text: screen.list.empty?.text ?? ""
            action: screen.list.emptyAction?.title ?? ""
            actionSymbol: screen.list.emptyAction?.symbol ?? ""
            onTriggered: screen.app.addMedicine.open()
        }
    }
    // While the details slide in or out a press would reach what they are about to cover.
    MouseArea {
        anchors.fill: parent
        visible: details.visible
        hoverEnabled: true
    }
    MedicineDetailView {
        id: details

        width: parent.width
        height: parent.height
        model: screen.app.detail
        backName: screen.list.title
    }
}
