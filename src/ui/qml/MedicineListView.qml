// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Pillora

// All medicines, and over them the details of the one that is open. See screens/MedicineListView.h.
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

        ScrollArea {
            anchors.fill: parent
            visible: screen.list.empty === null
            focus: screen.list.empty === null

            SearchField {
                id: search

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
            Repeater {
                model: screen.list.sections

                ListSection {
                    id: section

                    required property var row

                    header: row.title

                    Repeater {
                        model: section.row.rows

                        MedicineRow {
                            onOpened: screen.app.detail.open(row.id)
                            onRemoved: screen.model.deleteRow(section.row.id, row.id)
                        }
                    }
                }
            }
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
