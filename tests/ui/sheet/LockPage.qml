// SPDX-License-Identifier: MIT
import QtQuick
import Pillora
import Pillora.Samples

LockPanel {
    lock: Sample.object({ symbol: "lock.fill", title: "Pillora is Locked", text: "Authenticate to view your medications",
        hint: null, unlock: { id: "unlock", title: "Unlock", symbol: "faceid" }, usePasscode: null })
}
