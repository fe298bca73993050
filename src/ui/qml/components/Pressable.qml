// SPDX-License-Identifier: MIT
import QtQuick
import Pillora

// What every button is: pressed by touch, mouse, Space, Return and by a screen reader alike, with a visible focus.
FocusItem {
    id: control

    property string text: ""
    property int voice: Accessible.Button
    property bool pressable: true
    property bool takesFocus: true
    property real longest: 3600  // the seconds after which a press no longer counts but is held()
    property real cornerRadius: Theme.radius
    property real focusGap: 2
    property Item focusTarget: control
    readonly property bool down: tap.pressed && enabled
    readonly property bool hovered: hover.hovered && enabled
    signal clicked
    signal held

    // As if it had been pressed.
    function activate() {
        if (enabled && pressable)
            clicked()
    }
    function press(event: KeyEvent) {
        if (!event.isAutoRepeat)
            activate()
    }

    implicitWidth: Theme.touch
    implicitHeight: Theme.touch
    activeFocusOnTab: pressable && takesFocus
    opacity: enabled ? 1 : Theme.disabledOpacity

    Keys.onSpacePressed: event => press(event)
    Keys.onReturnPressed: event => press(event)
    Keys.onEnterPressed: event => press(event)
    Keys.onSelectPressed: event => press(event)

    Accessible.role: voice
    Accessible.name: text
    Accessible.focusable: activeFocusOnTab
    Accessible.onPressAction: activate()

    HoverHandler {
        id: hover

        enabled: control.pressable
    }
    TapHandler {
        id: tap

        property bool hasRested: false

        enabled: control.pressable
        // The button alone has the press, until a list that scrolls or a row that is swiped takes it.
        gesturePolicy: TapHandler.ReleaseWithinBounds
        longPressThreshold: control.longest
        onPressedChanged: {
            if (!pressed)
                return
            hasRested = false
            if (control.takesFocus)
                control.forceActiveFocus(Qt.MouseFocusReason)
        }
        onTapped: if (!hasRested)
            control.clicked()
        onLongPressed: {
            hasRested = true
            control.held()
        }
    }
    FocusRing {
        parent: control.focusTarget
        shown: control.visualFocus
        gap: control.focusGap
        cornerRadius: control.cornerRadius
    }
}
