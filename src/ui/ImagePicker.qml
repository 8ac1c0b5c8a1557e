// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtCore
import QtQuick.Dialogs
import org.lumora.ui

/// Lets the user choose the image for the next message.
FileDialog {
    signal picked(location: url)

    currentFolder: StandardPaths.standardLocations(StandardPaths.PicturesLocation)[0]
    fileMode: FileDialog.OpenFile
    nameFilters: [qsTr("Images") + " (" + PickableFiles.imagePatterns + ")"]
    title: qsTr("Attach Image")

    onAccepted: picked(selectedFile)
}
