// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QString>

namespace lumora {

/// An image file that goes to the model with a prompt, named by a label.
class Attachment
{
public:
    /// path: an absolute path of a local file, which need not exist.
    explicit Attachment(QString path)
        : m_path(std::move(path))
    {
    }

    Attachment label(QString text) const
    {
        Attachment labelled = *this;
        labelled.m_label = std::move(text);
        return labelled;
    }

    const QString &path() const { return m_path; }
    const QString &labelText() const { return m_label; }

    bool operator==(const Attachment &) const = default;

private:
    QString m_path;
    QString m_label;
};

/// What is asked of the model: a text, followed by any number of attachments.
struct Prompt
{
    QString text;
    QList<Attachment> attachments;

    bool operator==(const Prompt &) const = default;
};

} // namespace lumora
