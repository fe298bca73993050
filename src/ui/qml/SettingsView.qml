// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Pillora

// Preferences and backups. See screens/SettingsView.h.
TabPage {
    id: screen

    required property SettingsModel model
    readonly property var settings: model.content

    // One after the other.
    readonly property var alerts: settings.alerts
    readonly property var alert: alerts.count > 0 ? alerts.data(alerts.index(0, 0), Qt.UserRole) : null

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
    AlertDialog {
        shown: screen.alert !== null
        title: screen.alert?.title ?? ""
        message: screen.alert?.message ?? ""
        confirm: screen.alert?.button ?? ""
        onConfirmed: screen.model.dismissAlert(screen.alert.id)
    }
}
