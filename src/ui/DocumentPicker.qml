// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtCore
import QtQuick.Dialogs
import org.lumora.ui

/// Lets the user choose a document to import.
FileDialog {
    signal picked(location: url)

    currentFolder: StandardPaths.standardLocations(StandardPaths.DocumentsLocation)[0]
    fileMode: FileDialog.OpenFile
    nameFilters: [qsTr("Text, Markdown and PDF documents") + " (" + PickableFiles.documentPatterns + ")"]
    title: qsTr("Add Document")

    onAccepted: picked(selectedFile)
}
