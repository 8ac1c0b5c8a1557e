// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "races/libraryrules.h"
#include "races/mirrors.h"
#include "races/storereference.h"
#include "races/watchedmodel.h"

#include <QTemporaryDir>
#include <QTimer>

#include <random>

namespace lumora::races {

/// Random steps of a user, a model and a machine, on one data directory; after each the store and the library are
/// compared with the references.
class RaceDriver
{
public:
    explicit RaceDriver(quint32 seed);

    /// Each says what differs; empty where nothing does.
    QString step();
    /// Lets everything come to an end, opens the same files once more, and asks the index what it holds.
    QString finish();

    /// The latest steps, one a line.
    QString story() const { return m_story.join('\n'); }

private:
    struct Kind
    {
        const char *name;
        int weight;
        void (RaceDriver::*take)();
    };
    static const std::vector<Kind> &kinds();
    static const std::vector<Pick> &pickable();

    void type();
    void ask();
    void send();
    void stop();
    void select();
    void remove();
    void startNew();
    void attach();
    void detach();
    void chooseStyle();
    void changeAvailability();
    void checkAvailability();
    void letModelGoOn();
    void holdCounts();
    void releaseCounts();
    void failCounts();
    void changeContextSize();
    void die();
    void importDocument();
    void removeDocument();
    void restart();

    void open();
    QUuid anyChat();
    Script script();
    QString pick(const Pick &pick) const;
    QString turn();
    QString settle();
    QString observe();
    QString indexed();
    int number(int below);
    template <typename List>
    auto anyOf(const List &list) -> decltype(list[0])
    {
        return list[size_t(number(int(list.size())))];
    }

    std::mt19937 m_random;
    std::mt19937 m_modelRandom; ///< of its own, since when the model is asked is not always the same
    QTemporaryDir m_folder;
    StoreReference m_reference;
    LibraryReference m_libraryReference;
    std::shared_ptr<WatchedModel> m_model;
    std::unique_ptr<ChatStore> m_store;
    std::unique_ptr<PropertyMirror> m_properties;
    std::unique_ptr<PropertyMirror> m_libraryProperties;
    std::unique_ptr<ChatMirror> m_chats;
    QList<ImportedDocument> m_knownDocuments; ///< removed ones too
    QTimer m_clock;                           ///< ends every wait for events
    QString m_difference;                     ///< found by a step itself
    QStringList m_story;
};

} // namespace lumora::races
