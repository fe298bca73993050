// SPDX-License-Identifier: MIT
import QtQuick
import Pillora
import Pillora.Samples

TodayPage {
    Sheet {
        shown: true
        title: "Create Backup"
        toolbar: Sample.rows([{ id: "cancel", slot: "cancellation", title: "Cancel", symbol: null, isEnabled: true, isSemibold: false, menu: [] }])

        ScrollArea {
            anchors.fill: parent

            ListSection {
                footer: "Backups include all medicines, dose history, and settings."

                ButtonRow { row: Sample.object({ title: "Create Local Backup", symbol: "folder", isDestructive: false }) }
                ButtonRow { row: Sample.object({ title: "Create iCloud Backup", symbol: "icloud.and.arrow.up", isDestructive: false }) }
            }
        }
    }
}
