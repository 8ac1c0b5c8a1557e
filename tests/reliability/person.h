// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/scripted/scriptedmodelservice.h"
#include "reliability/plan.h"
#include "store/chatstore.h"

#include <QTemporaryDir>
#include <QUrl>

#include <map>
#include <memory>

namespace lumora {

/// Somebody who uses the program on a data directory: does the steps of a plan, and says what is there.
class Person
{
public:
    /// pickedFolder: where the files lie that are attached and imported; none: a folder that ends with the person.
    explicit Person(const QString &dataDirectory, const QString &pickedFolder = {});
    /// Ends the program, which was not told.
    ~Person();

    /// Makes the file that the step picks, if it does.
    void prepare(const Step &step);

    /// Waits until the step is done. What a failing disk keeps from happening is left, and the step is done then, too.
    void perform(const Step &step);

    /// What the program shows, without a reply that is under way. What is shown but not there, or not as it was, is
    /// named as such.
    Holdings holdings() const;

    /// Every chat and document is written again, as with a later change.
    void saveAll();

    const ChatStore &store() const { return *m_store; }

private:
    void select(const QString &title);
    void send(const Step &step);
    void import(const Step &step);
    void removeDocument(const QString &name);
    QUrl pickedFile(const Step &step);
    QString line(const ChatMessage &message) const;
    QString state(const ImportedDocument &document) const;

    QTemporaryDir m_ownFolder;
    QString m_pickedFolder;
    std::map<int, QUrl> m_pickedFiles; ///< by number
    std::shared_ptr<ScriptedModelService> m_model = std::make_shared<ScriptedModelService>();
    std::unique_ptr<ChatStore> m_store;
};

} // namespace lumora
