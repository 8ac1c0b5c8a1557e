// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/engine.h"

#include <llama.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace lumora::service {

/// Writes what libllama has to complain about to the standard error stream, and drops the rest of its log. Where ggml
/// gives up, it says why and aborts; left alone, it would start a debugger on this process.
void receiveLog();

/// Where the log of another library of ggml's goes the same way.
ggml_log_callback logReceiver();

/// libllama complains about an evaluation that was aborted, which is nothing to complain about.
void muteLog(bool muted);

void forgetErrors();

/// Why a file did not load, as half a sentence, from what libllama has complained about since errors were forgotten.
std::string reasonOfErrors(const std::string &architecture);

/// Whether libllama has complained in these words since errors were forgotten.
bool hasComplainedOf(const std::string &words);

/// For loading something, with a std::stop_token: whether it goes on.
bool goesOn(float progress, void *stop);

/// Half a sentence where a model that loads is not one that holds a conversation.
std::optional<std::string> reasonNotToConverse(const llama_model *model);

/// What each token that a context has room for takes: its kept state, and its share in evaluating a batch of this many
/// tokens. 0 where the state does not grow.
std::int64_t contextBytesPerToken(const llama_model *model, std::int64_t batchSize);

SamplingDefaults samplingDefaultsOf(const llama_model *model);

/// The messages as the template in the model's file lays them out. Nothing where there is none, or one that is not
/// known.
std::optional<std::string> applyTemplateOf(const llama_model *model, std::span<const ChatMessage> messages);

/// For the log: architecture, size and quantisation.
std::string describe(const llama_model *model);

} // namespace lumora::service
