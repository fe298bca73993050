// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Pillora

// Where a backup is made. `sheet` is its content, or null while it is closed.
Sheet {
    id: view

    required property SettingsModel model
    required property var sheet
    property var last: null

    onSheetChanged: if (sheet)
        last = sheet
    shown: sheet !== null
    title: last?.title ?? ""
    toolbar: last?.toolbar ?? null
    onTriggered: model.closeSheets()
    onDismissed: model.closeSheets()

    ScrollArea {
        anchors.fill: parent

        Optional {
            when: view.last !== null

            NotesSection {
                form: view.model
                section: view.last.section
            }
        }
        ProgressLine {
            text: view.last?.progress ?? ""
        }
    }
}
