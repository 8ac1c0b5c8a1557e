// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtCore
import QtQuick.Dialogs

/// Lets the user choose a document to import.
FileDialog {
    signal picked(location: url)

    // Dialogs tell cases apart.
    function patterns(extensions: var): var {
        return extensions.flatMap(each => ["*." + each, "*." + each.toUpperCase(), "*." + each[0].toUpperCase() + each.slice(1)]);
    }

    currentFolder: StandardPaths.standardLocations(StandardPaths.DocumentsLocation)[0]
    fileMode: FileDialog.OpenFile
    nameFilters: [qsTr("Text, Markdown and PDF documents") + " (" + patterns(["txt", "text", "md", "pdf"]).join(" ") + ")"]
    title: qsTr("Add Document")

    onAccepted: picked(selectedFile)
}
