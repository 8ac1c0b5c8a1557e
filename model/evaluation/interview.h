// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "conversations/example.h"
#include "evaluation/judgement.h"
#include "platform/model/systemlanguagemodel.h"

#include <qcoro/qcorotask.h>

namespace lumora::evaluation {

/// Asks the model as the program does, in a session of its own; its tools put out what the example says. Throws
/// std::runtime_error where the example's tools or schema are not the program's.
QCoro::Task<Reply> interview(SystemLanguageModel model, training::Example example);

} // namespace lumora::evaluation
