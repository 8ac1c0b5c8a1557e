// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "framewindow.h"

#include "samplehistory.h"

#include <QCoreApplication>
#include <QQuickItem>
#include <QQuickWindow>

#include <algorithm>
#include <ctime>

namespace lumora {

namespace {

double processorTime()
{
    timespec now = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1000 + double(now.tv_nsec) / 1e6;
}

} // namespace

double quantile(FrameTimes frames, double share)
{
    std::ranges::sort(frames);
    return frames.at(size_t(double(frames.size() - 1) * share));
}

std::vector<Conversation> framedChats(int messages)
{
    std::vector<Conversation> chats{sampleConversation(messages, 1000, 1), sampleConversation(messages, 1000, 2)};
    for (Conversation &chat : chats) {
        for (ChatMessage &message : chat.messages.all())
            message.card.reset();
    }
    return chats;
}

QString framedReply(int length)
{
    static QString text;
    for (quint32 i = 1; text.size() < length; ++i)
        text += sampleText(400, i).replace(u'\n', u' ') + QStringLiteral("\n\n");
    return text.left(length);
}

FrameTimes FrameWindow::open(int times)
{
    FrameTimes frames;
    settle();
    for (int i = 0; i < times; ++i) {
        frames.push_back(frame([&] { openChat(i % 2); }));
        settle();
    }
    return frames;
}

FrameTimes FrameWindow::scroll(qreal step)
{
    openChat(0);
    list()->setProperty("isFollowing", false); // as when somebody takes hold of it
    QMetaObject::invokeMethod(list(), "positionViewAtBeginning");
    settle();
    FrameTimes frames;
    while (!list()->property("atYEnd").toBool())
        frames.push_back(frame([&] { list()->setProperty("contentY", list()->property("contentY").toReal() + step); }));
    return frames;
}

FrameTimes FrameWindow::stream(int snapshots, int growth)
{
    openChat(1);
    settle();
    startReply(snapshots, growth);
    settle();
    FrameTimes frames;
    for (int i = 0; i < snapshots; ++i)
        frames.push_back(frame([&] { showSnapshot(); }));
    return frames;
}

void FrameWindow::beginFrame()
{
    m_begin = processorTime();
}

double FrameWindow::frame(const std::function<void()> &change)
{
    bool isShown = false;
    const auto connection = QObject::connect(window(), &QQuickWindow::frameSwapped, window(), [&] { isShown = true; });
    beginFrame();
    change();
    window()->update();
    while (!isShown)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QObject::disconnect(connection);
    return processorTime() - m_begin;
}

/// Lets the list make what it keeps beyond its edges.
void FrameWindow::settle()
{
    for (int i = 0; i < 5; ++i)
        frame([] {});
}

} // namespace lumora
