// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

class QThreadPool;

namespace lumora {

/// The threads for what a reply needs beside the model: its tools, and the images of its prompt. They are not Qt's own,
/// so that pictures in the window never wait for them. The application's end waits for what still runs on them.
QThreadPool *replyWorkers();

} // namespace lumora
