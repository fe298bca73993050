// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Pillora

// What lies over everything else and keeps keys and pointer to itself. It shows and hides as `shown` says; Esc, the way
// back and, where allowed, the dimmed outside only ask for that with dismissed(). The focus returns to where it was.
T.Popup {
    id: modal

    required property bool shown
    property string name: ""
    property string description: ""
    property int role: Accessible.Dialog
    property bool asksOutside: true
    default property alias content: scope.data
    signal dismissed

    readonly property real roomWide: parent ? parent.width : 360
    readonly property real roomHigh: parent ? parent.height : 720
    // What lies in another of these has none until that one is open.
    readonly property Item place: T.Overlay.overlay
    property Item before: null
    property bool beforeShown: false

    // It opens later in the turn, when everything else that the content decides has its value as well, and what makes
    // room for it has given the focus back. The qmllint of Qt 6.4 takes callLater for no function.
    function follow() {
        shown && place ? open() : close()
    }
    function giveBack() {
        // Something else may have opened meanwhile, and has the focus.
        const layer = layerOf(parent?.Window.window?.activeFocusItem ?? null)
        if (layer === null || layer === layerOf(before))
            before?.forceActiveFocus(beforeShown ? Qt.TabFocusReason : Qt.PopupFocusReason)
    }

    // What of the overlay this item lies in; null where it lies in the window itself.
    function layerOf(item) {
        let up = item
        while (up && up.parent !== place)
            up = up.parent
        return up
    }

    parent: place
    modal: true
    focus: true
    padding: 0
    closePolicy: asksOutside ? T.Popup.CloseOnReleaseOutside : T.Popup.NoAutoClose

    onShownChanged: shown ? Qt.callLater(follow) : follow()  // qmllint disable type
    onPlaceChanged: Qt.callLater(follow)  // qmllint disable type
    Component.onCompleted: Qt.callLater(follow)  // qmllint disable type
    onAboutToShow: {
        before = parent?.Window.window?.activeFocusItem ?? null
        beforeShown = before?.visualFocus ?? false
    }
    // Whoever came by key sees where the keys go.
    onOpened: {
        if (!beforeShown)
            return
        const active = parent?.Window.window?.activeFocusItem ?? null
        const item = active?.activeFocusOnTab ? active : scope.nextItemInFocusChain()
        if (item instanceof FocusItem)
            item.showFocus()
        else
            item.forceActiveFocus(Qt.TabFocusReason)
    }
    onAboutToHide: giveBack()
    onClosed: {
        giveBack()
        if (!shown)
            return
        // By a press outside, which the content is asked to follow; else it is open again.
        dismissed()
        Qt.callLater(follow)  // qmllint disable type
    }

    T.Overlay.modal: Rectangle {
        color: Theme.backdrop

        Behavior on opacity {
            NumberAnimation { duration: Theme.calm }
        }
    }

    FocusScope {
        id: scope

        anchors.fill: parent
        focus: true
        LayoutMirroring.enabled: Theme.mirrored
        LayoutMirroring.childrenInherit: true
        Accessible.role: modal.role
        Accessible.name: modal.name
        Accessible.description: modal.description

        Keys.onEscapePressed: modal.dismissed()
        Keys.onBackPressed: modal.dismissed()
    }
}
