// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Pillora

// Where a backup is restored. `sheet` is its content, or null while it is closed.
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

        ProgressLine {
            text: view.last?.progress ?? ""
        }
        Repeater {
            model: view.last?.sections ?? null

            ListSection {
                id: section

                required property var row

                header: row.title

                Repeater {
                    model: section.row.rows

                    BackupRow {
                        onRestored: view.model.restoreBackup(row.backup.url)
                        onRemoved: view.model.deleteBackup(row.backup.url)
                    }
                }
            }
        }
        EmptyState {
            anchors.horizontalCenter: parent.horizontalCenter
            topPadding: 48
            visible: !!view.last?.empty
            symbol: view.last?.empty?.symbol ?? "folder"
            title: view.last?.empty?.title ?? ""
            text: view.last?.empty?.text ?? ""
        }
    }
}
