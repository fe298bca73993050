// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Templates as T

// A list of any length: only what is in sight exists. Its rows stand in a column no wider than reads well. When its
// end comes near and there is more, it asks for that; likewise for what gave way at its beginning, and
// for all of that when somebody wants to be there at once.
ListView {
    id: list

    property bool hasMore: false
    property bool hasPrevious: false
    property real lastOrigin: 0
    readonly property real columnWidth: Math.min(width - 2 * Theme.padding, Theme.readableWidth)
    readonly property real columnX: (width - columnWidth) / 2
    signal endReached
    signal startReached
    signal startWanted

    clip: true
    boundsBehavior: Flickable.DragAndOvershootBounds
    flickableDirection: Flickable.VerticalFlick
    cacheBuffer: 480
    reuseItems: false  // rows made anew stand in order for Tab and screen readers
    bottomMargin: 24
    keyNavigationEnabled: false
    onContentYChanged: {
        if (hasMore && contentY + 4 * height > originY + contentHeight)
            endReached()
        else if (hasPrevious && contentY - 3 * height < originY)
            startReached()
    }

    // A header that grows or shrinks in sight leaves what is above the change where it is.
    onOriginYChanged: {
        const below = contentY - lastOrigin
        lastOrigin = originY
        if (below < (headerItem?.height ?? 1) && !moving)
            contentY = contentY > originY ? originY + below : originY  // a shrunk one may have been followed already
    }

    Keys.onPressed: event => {
        keys.take(event)
        if (event.key !== Qt.Key_Home || !hasPrevious)
            return
        // First of all, for Qt warns of rows that it was about to make and that are gone.
        positionViewAtBeginning()
        startWanted()
        positionViewAtBeginning()
    }

    KeyScroll {
        id: keys

        area: list
    }

    T.ScrollBar.vertical: ScrollIndicator {}
}
