// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "store/records.h"

#include <QString>

#include <functional>
#include <vector>

class QQuickItem;
class QQuickWindow;

namespace lumora {

/// Milliseconds of the main thread's processor time for each frame, the software renderer's included.
using FrameTimes = std::vector<double>;

/// The value below which this share of the frames lies.
double quantile(FrameTimes frames, double share);

/// Two chats of questions and answers as they come, without cards.
std::vector<Conversation> framedChats(int messages);

/// The beginning of a long reply in paragraphs, of this many UTF-16 units.
QString framedReply(int length);

/// A window with a list of two chats' messages, of which frames are timed.
class FrameWindow
{
public:
    FrameWindow() = default;
    virtual ~FrameWindow() = default;
    Q_DISABLE_COPY_MOVE(FrameWindow)

    /// Goes from one chat to the other, and to its end.
    FrameTimes open(int times);
    /// From the first message to the last, in steps of so many logical pixels.
    FrameTimes scroll(qreal step);
    /// A reply at the end of a chat, that many snapshots of it, each by so many UTF-16 units longer than the last.
    FrameTimes stream(int snapshots, int growth);

protected:
    virtual QQuickWindow *window() const = 0;
    virtual QQuickItem *list() const = 0;
    virtual void openChat(int index) = 0;
    virtual void startReply(int snapshots, int growth) = 0;
    virtual void showSnapshot() = 0;
    /// The time of the frame begins here, not where it was asked for.
    void beginFrame();

private:
    double frame(const std::function<void()> &change);
    void settle();

    double m_begin = 0;
};

} // namespace lumora
