// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

import QtQuick
import QtQuick.Layouts
import org.lumora.ui

/// Why the model cannot be used, when that was found, and a way to look again.
Rectangle {
    id: banner

    required property ChatStore store

    color: Theme.warningGround
    implicitHeight: column.implicitHeight + 2 * Theme.edgePadding

    ColumnLayout {
        id: column

        anchors.left: parent.left
        anchors.margins: Theme.edgePadding
        anchors.right: parent.right
        anchors.top: parent.top
        spacing: Theme.rowSpacing

        RowLayout {
            spacing: Theme.bannerSpacing

            Spinner {
                Layout.alignment: Qt.AlignTop
                label: qsTr("Checking model readiness")
                visible: banner.store.isModelNotReady
            }
            Icon {
                Layout.alignment: Qt.AlignTop
                Layout.preferredHeight: 18
                Layout.preferredWidth: 18
                color: Theme.warning
                source: Symbols.warning
                visible: !banner.store.isModelNotReady
            }
            PlainText {
                Accessible.role: Accessible.AlertMessage
                Layout.fillWidth: true
                font.pixelSize: Theme.rowSize
                text: banner.store.availabilityMessage
                wrapMode: Text.Wrap
            }
        }
        RowLayout {
            PlainText {
                Layout.fillWidth: true
                color: Theme.secondaryText
                font.pixelSize: Theme.captionSize
                text: qsTr("Checked at %1 · Checking every 10 seconds").arg(checkTime.text)
                wrapMode: Text.Wrap
            }
            TextButton {
                text: qsTr("Check Now")

                onClicked: banner.store.refreshAvailability()
            }
        }
        PlainText {
            Layout.fillWidth: true
            color: Theme.secondaryText
            font.pixelSize: Theme.captionSize
            text: qsTr("macOS does not provide this app with a download percentage or transfer status.")
            visible: banner.store.isModelNotReady
            wrapMode: Text.Wrap
        }
    }
    TimeOfDay {
        id: checkTime

        moment: banner.store.lastAvailabilityCheck
    }
}
