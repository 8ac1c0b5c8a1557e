// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "features/structuredanswer.h"
#include "races/racedriver.h"

namespace lumora::races {

namespace {

const std::vector<QString> drafts{
    "",
    " \n\t",
    "Hello",
    "  What time is it today?  ",
    "New Chat",
    "Read the text in it",
    "Is there a QR code?",
    "What do my notes say about lighthouses?",
    "Compare PLAN.MD with the rest",
    QString::fromUtf8("👩‍👩‍👧‍👦").repeated(60),
    QString("A long question. ").repeated(80),
};

const std::vector<QString> pieces{
    "The answer ", "is **this**. ",          " ", "\n",       "<start_of_turn>",
    "model",       "<start_of_turn>model\n", "",  "%output%", QString::fromUtf8("naïve 👍🏽"),
};

const std::vector<Availability> availabilities{
    Availability::available(),
    Availability::unavailable(Availability::UnavailableReason::deviceNotEligible),
    Availability::unavailable(Availability::UnavailableReason::appleIntelligenceNotEnabled),
    Availability::unavailable(Availability::UnavailableReason::modelNotReady),
    Availability::unavailable(Availability::UnavailableReason::other),
};

QByteArray answerJson()
{
    return StructuredAnswer{"A card", "What it says.", {"One", "Two"}, {}}.generatedContent().toJson();
}

} // namespace

const std::vector<Pick> &RaceDriver::pickable()
{
    static const std::vector<Pick> all{
        {"Plan.MD", "# The lighthouse plan\nEverything stays here."},
        {"letter.txt", "A letter about the lighthouse."},
        {"letter.txt", "Another lighthouse, under the same name."},
        {"empty.txt", " \n\t\n", Pick::Outcome::hasNoText},
        {"latin.txt", "lighthouse \xe9\xff", Pick::Outcome::failsWithCopy},
        {"gone.txt", {}, Pick::Outcome::failsWithoutCopy},
    };
    return all;
}

const std::vector<RaceDriver::Kind> &RaceDriver::kinds()
{
    static const std::vector<Kind> all{
        {"ask", 20, &RaceDriver::ask},
        {"type", 6, &RaceDriver::type},
        {"send", 6, &RaceDriver::send},
        {"stop", 3, &RaceDriver::stop},
        {"select", 5, &RaceDriver::select},
        {"delete", 5, &RaceDriver::remove},
        {"new chat", 3, &RaceDriver::startNew},
        {"attach", 6, &RaceDriver::attach},
        {"detach", 2, &RaceDriver::detach},
        {"choose a style", 4, &RaceDriver::chooseStyle},
        {"availability changes", 6, &RaceDriver::changeAvailability},
        {"check the availability", 2, &RaceDriver::checkAvailability},
        {"the model goes on", 14, &RaceDriver::letModelGoOn},
        {"counts are held", 3, &RaceDriver::holdCounts},
        {"counts are released", 6, &RaceDriver::releaseCounts},
        {"counts fail", 1, &RaceDriver::failCounts},
        {"another context size", 2, &RaceDriver::changeContextSize},
        {"the service dies", 2, &RaceDriver::die},
        {"import", 5, &RaceDriver::importDocument},
        {"remove a document", 3, &RaceDriver::removeDocument},
        {"restart", 2, &RaceDriver::restart},
    };
    return all;
}

void RaceDriver::type()
{
    const QString draft = anyOf(drafts);
    m_reference.apply([&](StoreRules &rules) { rules.draft = draft; });
    m_store->setDraft(draft);
}

void RaceDriver::ask()
{
    type();
    send();
}

void RaceDriver::send()
{
    m_reference.apply([](StoreRules &rules) { rules.send(); });
    m_store->send();
}

void RaceDriver::stop()
{
    m_reference.apply([](StoreRules &rules) { rules.stopGenerating(); });
    m_store->stopGenerating();
}

void RaceDriver::select()
{
    const QUuid id = anyChat();
    m_reference.apply([&](StoreRules &rules) { rules.selectConversation(id); });
    m_store->selectConversation(id);
}

void RaceDriver::remove()
{
    const QUuid id = anyChat();
    m_reference.apply([&](StoreRules &rules) { rules.deleteConversation(id); });
    m_store->deleteConversation(id);
}

void RaceDriver::startNew()
{
    m_reference.apply([](StoreRules &rules) { rules.newConversation(); });
    m_store->newConversation();
}

void RaceDriver::attach()
{
    // The store takes any file as an image.
    const Pick &image = anyOf(pickable());
    const bool isThere = image.outcome != Pick::Outcome::failsWithoutCopy;
    m_reference.apply([&](StoreRules &rules) {
        isThere ? rules.attachImage(QFileInfo(image.name).suffix().toLower()) : rules.failToAttach();
    });
    m_store->attachImage(QUrl::fromLocalFile(pick(image)));
}

void RaceDriver::detach()
{
    m_reference.apply([](StoreRules &rules) { rules.removePendingImage(); });
    m_store->removePendingImage();
}

void RaceDriver::chooseStyle()
{
    const ReplyStyle style = number(2) == 0 ? ReplyStyle::structured : ReplyStyle::chat;
    m_reference.apply([&](StoreRules &rules) { rules.replyStyle = style; });
    m_store->setReplyStyle(style);
}

void RaceDriver::changeAvailability()
{
    const int chosen = number(20);
    const Availability &availability = availabilities[chosen < int(availabilities.size()) ? size_t(chosen) : 0];
    m_reference.apply([&](StoreRules &rules) { rules.availability = availability; });
    m_model->setAvailability(availability);
}

void RaceDriver::checkAvailability()
{
    const TimePoint before = TimePoint::now();
    m_store->refreshAvailability();
    if (m_store->lastAvailabilityCheck() < before)
        m_difference = "the time of the check did not move";
}

void RaceDriver::letModelGoOn()
{
    m_model->release();
}

void RaceDriver::holdCounts()
{
    m_model->holdCounts();
}

void RaceDriver::releaseCounts()
{
    m_model->releaseCounts();
}

void RaceDriver::failCounts()
{
    m_model->releaseCounts("The text could not be counted. Send the message again.");
}

void RaceDriver::changeContextSize()
{
    const int size = 50 << number(8);
    if (m_reference.now().run)
        return; // what a run makes of it depends on the moment
    m_model->setContextSize(size);
    Q_EMIT m_model->availabilityChanged();
}

void RaceDriver::die()
{
    const Availability other = Availability::unavailable(Availability::UnavailableReason::other);
    m_reference.apply([&](StoreRules &rules) { rules.availability = other; });
    m_model->die();
}

void RaceDriver::importDocument()
{
    const Pick &chosen = anyOf(pickable());
    m_libraryReference.add(chosen);
    m_store->library()->add(QUrl::fromLocalFile(pick(chosen)));
}

void RaceDriver::removeDocument()
{
    for (const ImportedDocument &document : m_store->library()->documents()) {
        if (!m_knownDocuments.contains(document))
            m_knownDocuments.append(document);
    }
    const int chosen = number(1000);
    if (m_knownDocuments.isEmpty())
        return;
    const ImportedDocument document = m_knownDocuments.at(chosen % m_knownDocuments.size());
    m_libraryReference.remove(document.id);
    m_store->library()->remove(document);
}

void RaceDriver::restart()
{
    m_chats.reset();
    m_properties.reset();
    m_libraryProperties.reset();
    m_store.reset();
    open();
    m_difference = m_libraryReference.restart(*m_store->library());
}

/// What the model says next: some pieces or an answer, with calls in between, and at most places it waits.
Script RaceDriver::script()
{
    const auto any = [this](int below) { return std::uniform_int_distribution(0, below - 1)(m_modelRandom); };
    const QStringList tools{"currentDate", "searchDocuments", "readBarcodes", "unknown"};
    const bool isStructured = m_reference.now().run && m_reference.now().run->style == ReplyStyle::structured;
    Script result;
    for (int steps = any(16); steps > 0; --steps) {
        const int kind = any(10);
        if (kind == 0)
            result.steps.append(Script::ToolCall{tools[any(4)], R"({"query": "lighthouse"})"});
        else if (kind < 5)
            result.steps.append(Script::Hold{});
        else if (!isStructured)
            result.steps.append(Script::Text{pieces[size_t(any(int(pieces.size())))]});
    }
    if (any(8) == 0)
        result.steps.append(Script::Failure{"The model has run out of words. Send the message again."});
    else if (isStructured)
        result.steps.append(Script::Answer{any(6) == 0 ? QByteArray("{}") : answerJson()});
    return result;
}

} // namespace lumora::races
