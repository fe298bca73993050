// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T

// A line of text. `shown` is the content's text; what the person types is told by edited() and stays until that text
// becomes another.
T.TextField {
    id: control

    required property string name
    property string shown: ""
    property bool isTitle: false
    property bool framed: false
    property string symbol: ""
    signal edited(string text)

    implicitWidth: 328
    implicitHeight: Math.max(Theme.touch, contentHeight + topPadding + bottomPadding)
    leftPadding: symbol !== "" && !Theme.mirrored ? 40 : Theme.padding
    rightPadding: symbol !== "" && Theme.mirrored ? 40 : Theme.padding
    topPadding: 10
    bottomPadding: 10
    text: shown
    placeholderText: name
    font.family: Theme.fontFamily
    font.pixelSize: isTitle ? Theme.title2 : Theme.body
    font.weight: isTitle ? Font.Bold : Font.Normal
    color: Theme.text
    placeholderTextColor: Theme.placeholder
    selectionColor: Theme.solid("blue")
    selectedTextColor: Theme.onSolid
    verticalAlignment: TextInput.AlignVCenter
    horizontalAlignment: Theme.mirrored ? TextInput.AlignRight : TextInput.AlignLeft
    LayoutMirroring.enabled: false
    selectByMouse: true
    opacity: enabled ? 1 : Theme.disabledOpacity

    // Return goes on to the next field; behind the last one the keyboard on the screen leaves.
    function goOn() {
        let next = nextItemInFocusChain()
        while (next !== control && !(next instanceof TextInput))
            next = next.nextItemInFocusChain()
        if (next.mapToItem(null, 0, 0).y > mapToItem(null, 0, 0).y)
            next.forceActiveFocus(Qt.TabFocusReason)
        else
            Qt.inputMethod.hide()
    }

    onAccepted: goOn()
    onTextEdited: edited(text)

    Accessible.role: Accessible.EditableText
    Accessible.name: name

    Label {
        LayoutMirroring.enabled: Theme.mirrored
        x: control.leftPadding
        width: control.width - control.leftPadding - control.rightPadding
        height: control.height
        visible: control.length === 0 && control.preeditText === ""
        text: control.placeholderText
        elide: Text.ElideRight
        wrapMode: Text.NoWrap
        verticalAlignment: Text.AlignVCenter
        color: control.placeholderTextColor
        font: control.font
        Accessible.ignored: true
    }
    Symbol {
        visible: control.symbol !== ""
        name: control.symbol
        size: 20
        x: Theme.mirrored ? control.width - width - 12 : 12
        y: (control.height - height) / 2
        color: Theme.placeholder
    }

    background: Rectangle {
        radius: Theme.radius
        color: control.framed ? Theme.field : "transparent"

        FocusRing {
            shown: control.activeFocus
            gap: control.framed ? 0 : -6
        }
    }

    cursorDelegate: Rectangle {
        id: cursor

        width: 2
        color: Theme.focus
        visible: control.cursorVisible
    }
}
