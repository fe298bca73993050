// SPDX-License-Identifier: MIT
import QtQuick

// Something that is made from its file once it is wanted, and then stays. Until then not even its types are read, which
// is most of what a start costs. Deliberate: not a Loader, because that of Qt 6.4 leaves what it made behind when it
// goes, for an event loop that may have ended.
FocusScope {
    id: place

    required property url file
    required property var properties
    property bool wanted: true
    property Item made: null

    function make() {
        if (!wanted || made)
            return
        const component = Qt.createComponent(file)
        if (component.status === Component.Error)
            console.warn(component.errorString())
        const all = Object.assign({ width: width, height: height, focus: true }, properties)
        made = component.createObject(place, all) as Item
        made.anchors.fill = place
    }

    onWantedChanged: make()
    Component.onCompleted: make()
}
