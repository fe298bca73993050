// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Pillora

// Preferences and backups. See screens/SettingsView.h.
TabPage {
    id: screen

    required property SettingsModel model
    readonly property var settings: model.content

    title: settings.title

    ScrollArea {
        anchors.fill: parent
        focus: true

        NotesSection {
            form: screen.model
            section: screen.settings.unsaved
        }
        FormSections {
            form: screen.model
            sections: screen.settings.sections
        }
        NotesSection {
            form: screen.model
            section: screen.settings.notes
        }
    }
    BackupSheetView {
        model: screen.model
        sheet: screen.settings.backupSheet
    }
    RestoreSheetView {
        model: screen.model
        sheet: screen.settings.restoreSheet
    }
    Repeater {
        model: screen.settings.alerts

        Item {
            id: slot

            required property var row

            AlertDialog {
                shown: true
                title: slot.row.title
                message: slot.row.message
                confirm: slot.row.button
                onConfirmed: screen.model.dismissAlert(slot.row.id)
            }
        }
    }
}
