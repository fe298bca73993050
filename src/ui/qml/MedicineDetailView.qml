// SPDX-License-Identifier: MIT
import QtQuick
import Pillora

// One medicine, sliding in over the list. See screens/MedicineDetailView.h.
FocusScope {
    id: page

    required property MedicineDetailModel model
    required property string backName
    readonly property var detail: model.content
    property real away: model.isOpen ? 0 : 1  // how far it has slid out, 1 for wholly

    x: away * (Theme.mirrored ? -width : width)
    visible: away < 1
    focus: model.isOpen

    Behavior on away {
        NumberAnimation { duration: Theme.calm; easing.type: Easing.OutCubic }
    }

    Keys.onEscapePressed: model.goBack()
    Keys.onBackPressed: model.goBack()

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }
    NavigationBar {
        id: head

        width: Math.min(parent.width, Theme.readableWidth + 2 * Theme.padding)
        anchors.horizontalCenter: parent.horizontalCenter
        title: page.detail.title
        backName: page.detail.isEditing ? "" : page.backName
        toolbar: page.detail.toolbar
        onWentBack: page.model.goBack()
        onTriggered: id => page.model.press(id)
    }
    ScrollArea {
        anchors.top: head.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        focus: true

        FormSections {
            form: page.model
            sections: page.detail.sections
        }
    }
    AlertDialog {
        shown: page.model.isOpen && page.detail.deleteAlert !== null
        title: page.detail.deleteAlert?.title ?? ""
        message: page.detail.deleteAlert?.message ?? ""
        cancel: page.detail.deleteAlert?.cancel ?? ""
        confirm: page.detail.deleteAlert?.confirm ?? ""
        isDestructive: true
        onCancelled: page.model.dismissDeleteAlert()
        onConfirmed: page.model.confirmDelete()
    }
    MonthDialog {
        form: page.model
        month: page.model.isOpen ? page.detail.monthSheet : null
    }
}
