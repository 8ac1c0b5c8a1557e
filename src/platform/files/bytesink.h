// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArrayView>

#include <functional>

namespace lumora {

/// Takes the bytes of a file piece by piece, in order. They are valid during the call only.
using ByteSink = std::function<void(QByteArrayView)>;

} // namespace lumora
