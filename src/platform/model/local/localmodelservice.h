// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/local/modelfiles.h"
#include "platform/model/local/requestqueue.h"
#include "platform/model/local/serviceprocess.h"
#include "platform/model/modelservice.h"
#include "platform/model/pendingcount.h"

#include <QDeadlineTimer>
#include <QPointer>
#include <QTimer>

#include <chrono>
#include <optional>
#include <vector>

namespace lumora {

/// How long the service is waited for, and its file.
struct ServicePatience
{
    using Time = std::chrono::milliseconds;

    Time untilSettled{3000};   ///< without a change, and the file counts as complete
    Time untilNextLook{1000};  ///< at a file that is not
    Time untilCancelled{5000}; ///< without an answer to a cancel, and the service counts as hung
    Time untilCounted{30000};  ///< the same for a token count
    Time untilLoaded{600000};  ///< the same for a model; a large one comes from a slow disk in minutes
    Time untilRetry{60000};    ///< after what may go better later: too little memory, too many crashes
};

struct LocalModelSettings
{
    /// The user's own models; it need not exist.
    std::optional<QString> modelFolder;
    /// Where the built-in model lies; it need not exist.
    QString builtInModel;
    /// What requests begin with; computed before the first one comes.
    QString instructions;
    ServiceCommand command;
    ServicePatience patience;
};

/// The language model of this computer, run by the model service. Chooses the file, starts a service that can read this
/// file, loads it, and starts the service anew when it dies. It does nothing until it is first asked for something.
class LocalModelService : public ModelService
{
    Q_OBJECT

public:
    explicit LocalModelService(LocalModelSettings settings, QObject *parent = nullptr);
    /// Ends the service; this takes less than a second.
    ~LocalModelService() override;

    Availability availability() override;
    qint64 contextSize() const override;
    /// Waits while the model is loading.
    QCoro::Task<qint64> tokenCount(QString text) override;
    /// Waits while the model is loading.
    std::unique_ptr<ModelReply> respond(ReplyRequest request) override;

private:
    enum class State {
        notLooked,
        noFile,
        growing,   ///< the file is being written
        loading,   ///< the service was told to load m_file
        ready,     ///< it has loaded it
        badFile,   ///< until the file changes
        tooLarge,  ///< for any memory of this computer; until the file changes
        cannotRun, ///< too little memory now, or no service; until a pause has passed or the file changes
        failing,   ///< for no fault of the file that is known; until a pause has passed or the file changes
    };

    void look();
    QString noFileProblem() const;
    bool canGoOnBeside(const ModelFile &file) const;
    bool mustLoad(const ModelFile &file) const;
    void adopt(const ModelFile &file);
    void load(const ModelFile &file);
    void enter(State state, const QString &problem = {});
    Availability currentAvailability() const;
    void announceLater();
    void announce();

    void submit();
    void sendWaiting();
    ServiceProcess::Sent send(const wire::Request &request);
    void sendToolOutput(LocalReply &reply, qint64 id, const QString &callID, const QString &output);
    void cancelReply(qint64 id);
    void remember(LocalReply *reply);
    void superviseService();

    void startProcess(const QStringList &files);
    void dropProcess();
    void takeAnswer(const wire::Answer &answer);
    bool takeLoadAnswer(const wire::Answer &answer);
    void takeLoaded(const wire::Loaded &loaded);
    void takeLoadFailure(const wire::Failed &failure);
    bool tryWithoutProjector();
    void takeEnd(const ServiceEnd &end);
    void startAnew(const QString &failure);

    LocalModelSettings m_settings;
    State m_state = State::notLooked;
    QString m_problem; // why a request fails in this state
    std::optional<ModelFile> m_lastLook;
    std::optional<ModelFile> m_file;  // that the state is about
    std::optional<ModelFile> m_blind; // whose projector brought the service down
    qint64 m_contextSize = 0;         // of the model loaded last, until there is none to be had
    bool m_readsImages = false;       // the model loaded last
    int m_crashes = 0;                // since the last reply that ended as it should
    QDeadlineTimer m_retry;
    QTimer m_nextLook;
    std::optional<Availability> m_announced; // or given as an answer
    bool m_isAnnouncementPosted = false;

    ServiceProcess *m_process = nullptr; // a child
    qint64 m_lastID = 0;
    qint64 m_loadID = 0;
    RequestQueue m_requests{this, [this] { submit(); }};
    std::vector<QPointer<LocalReply>> m_replies; // some of them ended
    PendingCounts m_counts;
    QTimer m_patience;
    RequestQueue::Current m_supervised;
};

} // namespace lumora
