// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "documents/documentlibrary.h"
#include "platform/model/systemlanguagemodel.h"
#include "store/records.h"

#include <QObject>
#include <QString>
#include <QUuid>

#include <memory>
#include <optional>
#include <vector>

namespace lumora {

class GenerationTask;

/// The state of the running program: the chats, the composer, the reply that is generated. One object, created at start
/// and kept to the end; used on the main thread only. Failures are never thrown out of an operation: they become the one
/// error line.
class ChatStore : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QUuid selectedID READ selectedIDOrNull NOTIFY selectedIDChanged)
    Q_PROPERTY(QString windowTitle READ windowTitle NOTIFY windowTitleChanged)
    Q_PROPERTY(QString draft READ draft WRITE setDraft NOTIFY draftChanged)
    Q_PROPERTY(lumora::ReplyStyles::ReplyStyle replyStyle READ replyStyle WRITE setReplyStyle NOTIFY replyStyleChanged)
    Q_PROPERTY(qint64 contextTokens READ contextTokens NOTIFY contextTokensChanged)
    Q_PROPERTY(qint64 contextSize READ contextSize NOTIFY modelAvailabilityChanged)
    Q_PROPERTY(QString pendingImagePath READ pendingImagePathOrNull NOTIFY pendingImageURLChanged)
    Q_PROPERTY(bool isGenerating READ isGenerating NOTIFY isGeneratingChanged)
    Q_PROPERTY(bool canSend READ canSend NOTIFY canSendChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(QString availabilityMessage READ availabilityMessage NOTIFY modelAvailabilityChanged)
    Q_PROPERTY(bool isModelNotReady READ isModelNotReady NOTIFY modelAvailabilityChanged)
    Q_PROPERTY(QDateTime lastAvailabilityCheck READ lastAvailabilityCheckTime NOTIFY modelAvailabilityChanged)
    Q_PROPERTY(lumora::DocumentLibrary *library READ library CONSTANT)

public:
    /// Reads the history and the document list from the data directory (none: the history stays in memory), reads the
    /// model's availability, and selects the newest chat, making one where there is none.
    ChatStore(SystemLanguageModel model, std::optional<QString> applicationSupport, QObject *parent = nullptr);
    ~ChatStore() override;

    // Published state

    /// In display order, top of the sidebar first.
    const std::vector<Conversation> &conversations() const { return m_conversations; }
    std::optional<QUuid> selectedID() const { return m_selectedID; }
    /// None where nothing is selected, or what is selected is not in the list.
    const Conversation *selectedConversation() const;
    const QString &draft() const { return m_draft; }
    void setDraft(const QString &draft);
    ReplyStyle replyStyle() const { return m_replyStyle; }
    void setReplyStyle(ReplyStyle style);
    /// Tokens of the latest prompt.
    qint64 contextTokens() const { return m_contextTokens; }
    qint64 contextSize() const { return m_model.contextSize(); }
    /// The absolute path of the copied image that the next message carries.
    std::optional<QString> pendingImageURL() const { return m_pendingImageURL; }
    bool isGenerating() const { return m_isGenerating; }
    /// Whether there is something to send, nothing is being generated, and the model is available.
    bool canSend() const;
    /// The one line for the user; null where there is none.
    const QString &errorMessage() const { return m_errorMessage; }
    Availability modelAvailability() const { return m_modelAvailability; }
    TimePoint lastAvailabilityCheck() const { return m_lastAvailabilityCheck; }
    /// Why the model is unavailable; null while it is available.
    QString availabilityMessage() const;
    /// The title of the selected chat, or the program's name.
    QString windowTitle() const;
    DocumentLibrary *library() const { return m_library; }

    // Files

    std::optional<QString> conversationsFileURL() const;
    std::optional<QString> imagesDirectoryURL() const;
    /// Where a stored image lies, whether it exists or not.
    Q_INVOKABLE std::optional<QString> imageURL(const QString &filename) const;

    // Operations

    Q_INVOKABLE void newConversation();
    Q_INVOKABLE void selectConversation(const QUuid &id);
    Q_INVOKABLE void deleteConversation(const QUuid &id);
    /// path: an absolute path of the picked image.
    Q_INVOKABLE void attachImage(const QString &path);
    Q_INVOKABLE void removePendingImage();
    Q_INVOKABLE void refreshAvailability();
    Q_INVOKABLE void send();
    Q_INVOKABLE void stopGenerating();
    /// Replaces conversations.json by the chats as they are.
    void save();

Q_SIGNALS:
    // After the change; rows are positions in conversations(), or in the messages of the chat named.
    void conversationsReset();
    void conversationInserted(qsizetype row);
    void conversationRemoved(qsizetype row);
    void conversationTitleChanged(qsizetype row);
    void messageAppended(const QUuid &conversationID);
    void messageChanged(const QUuid &conversationID, qsizetype row);
    void messageRemoved(const QUuid &conversationID, qsizetype row);

    void selectedIDChanged();
    void windowTitleChanged();
    void draftChanged();
    void replyStyleChanged();
    void contextTokensChanged();
    void pendingImageURLChanged();
    void isGeneratingChanged();
    void canSendChanged();
    void errorMessageChanged();
    /// After every check, also where nothing changed but the time of the check.
    void modelAvailabilityChanged();
};

} // namespace lumora
