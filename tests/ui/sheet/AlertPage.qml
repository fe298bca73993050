// SPDX-License-Identifier: MIT
import QtQuick
import Pillora

ListPage {
    AlertDialog {
        shown: true
        title: "Delete Medicine?"
        message: "This will permanently delete Aspirin and all its history. This action cannot be undone."
        cancel: "Cancel"
        confirm: "Delete"
        isDestructive: true
    }
}
