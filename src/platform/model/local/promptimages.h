// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/prompt.h"

#include <QFutureWatcher>
#include <QObject>

#include <optional>
#include <vector>
#include <wire/messages.h>

namespace lumora {

/// The pixels of each of a prompt's attachments; nothing for a file that cannot be read as an image.
using AttachedImages = std::vector<std::optional<wire::Image>>;

/// Reads the images that are attached to a prompt, on a worker thread, as soon as it is made.
class PromptImages : public QObject
{
    Q_OBJECT

public:
    explicit PromptImages(QList<Attachment> attachments);

    bool areRead() const { return m_reading.isFinished(); }

    /// Once they are read.
    AttachedImages images() const { return m_reading.result(); }

Q_SIGNALS:
    /// From the event loop.
    void read();

private:
    QFutureWatcher<AttachedImages> m_reading;
};

} // namespace lumora
