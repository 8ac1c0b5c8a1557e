// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "documents/documentlibrary.h"
#include "platform/files/filestore.h"
#include "platform/model/languagemodelsession.h"
#include "platform/vision/imagereader.h"
#include "store/conversationlist.h"
#include "store/records.h"

#include <QObject>
#include <QString>
#include <QUrl>
#include <QUuid>

#include <memory>
#include <optional>
#include <vector>

namespace lumora {

class GenerationTask;
struct GenerationRun;
struct StructuredAnswer;

/// The state of the running program: the chats, the composer, the reply that is generated. One object, created at start
/// and kept to the end; used on the main thread only. Failures are never thrown out of an operation: they become the
/// one error line.
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
    ChatStore(SystemLanguageModel model, std::optional<QString> applicationSupport, PdfTextReader pdf = {},
              ImageReader images = {}, QObject *parent = nullptr);
    ~ChatStore() override;
    Q_DISABLE_COPY_MOVE(ChatStore)

    // Published state

    /// In display order, top of the sidebar first.
    const std::vector<Conversation> &conversations() const { return m_conversations.all(); }
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
    bool canSend() const { return m_canSend; }
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
    std::optional<QString> imageURL(const QString &filename) const;

    // Operations

    Q_INVOKABLE void newConversation();
    Q_INVOKABLE void selectConversation(QUuid id);
    Q_INVOKABLE void deleteConversation(QUuid id);
    /// Copies a picked image; the next message carries the copy.
    Q_INVOKABLE void attachImage(const QUrl &location);
    /// The same for a picture that is no file yet, as one from the clipboard.
    void attachPicture(const QByteArray &png);
    Q_INVOKABLE void removePendingImage();
    Q_INVOKABLE void refreshAvailability();
    Q_INVOKABLE void send();
    Q_INVOKABLE void stopGenerating();
    /// Replaces conversations.json by the chats as they are.
    void save();

    /// The text that asks for the next reply of a chat: earlier turns, as far as the budget goes, and the latest
    /// message. One message is left out, the reply to be filled. budget: in characters. Empty for a chat that is not
    /// there.
    QString promptText(const QUuid &conversationID, const QUuid &excluding, qint64 budget) const;

Q_SIGNALS:
    // After the change; rows are positions in conversations(), or in the messages of the chat named.
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

private:
    friend struct GenerationRun;

    QUuid selectedIDOrNull() const { return m_selectedID.value_or(QUuid()); }
    QString pendingImagePathOrNull() const { return m_pendingImageURL.value_or(QString()); }
    QDateTime lastAvailabilityCheckTime() const { return m_lastAvailabilityCheck.toDateTime(); }
    bool isModelNotReady() const;

    // Published fields are written here only; each tells its observers.
    void setSelectedID(const QUuid &id);
    void setContextTokens(qint64 tokens);
    void setPendingImageURL(const std::optional<QString> &path);
    void setGenerating(bool isGenerating);
    void setErrorMessage(const QString &message);
    void updateCanSend();

    // store/chatstore.cpp
    void load();
    FileOutcome writeHistory(const QString &path);

    // store/conversations.cpp
    void startComposing(const QUuid &conversationID);
    void removeMessage(const QUuid &conversationID, qsizetype row);
    void appendMessage(ChatMessage message, const QUuid &conversationID);

    // store/attachments.cpp
    template <typename Store>
    void attachImage(const QString &name, Store store);

    // generation/sending.cpp
    std::optional<QString> latestImageURL(const QUuid &conversationID) const;

    // generation/replyrecords.cpp: what a run writes on the message that it fills. Each does nothing where the chat or
    // the message is gone.
    void applySnapshot(const QString &content, const QUuid &messageID, const QUuid &conversationID);
    void applyAnswer(const StructuredAnswer &answer, const QUuid &messageID, const QUuid &conversationID);
    void recordToolEvents(const Transcript &transcript, const QUuid &messageID, const QUuid &conversationID);
    void recordUsage(const Usage &usage, const QUuid &messageID, const QUuid &conversationID);
    void discardEmptyReply(const QUuid &messageID, const QUuid &conversationID);
    template <typename Change>
    void changeMessage(const QUuid &messageID, const QUuid &conversationID, Change change);

    enum class HistoryFile {
        unknown, ///< not read, so what may lie there is set aside before the first write
        ours,    ///< what lies there was read, or written, by this store
    };

    SystemLanguageModel m_model;
    std::optional<QString> m_applicationSupport;
    ImageReader m_images;
    DocumentLibrary *m_library; // a child
    HistoryFile m_historyFile = HistoryFile::unknown;

    ConversationList m_conversations;
    std::optional<QUuid> m_selectedID;
    QString m_draft;
    ReplyStyle m_replyStyle = ReplyStyle::chat;
    qint64 m_contextTokens = 0;
    std::optional<QString> m_pendingImageURL;
    bool m_isGenerating = false;
    bool m_canSend = false;
    QString m_errorMessage;
    Availability m_modelAvailability;
    TimePoint m_lastAvailabilityCheck;

    std::shared_ptr<GenerationTask> m_generationTask;
    std::optional<QUuid> m_generationID; ///< of the current run; a run that is not current writes nothing
};

} // namespace lumora
