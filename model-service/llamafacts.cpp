// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "llamafacts.h"

#include "core/utf8.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <cstdio>
#include <mutex>
#include <stop_token>
#include <string_view>
#include <vector>

namespace lumora::service {

namespace {

// libllama's log knows one receiver in the whole process.
std::mutex logMutex; // guards the next two; worker threads log, too
std::string errors;
ggml_log_level lastLevel = GGML_LOG_LEVEL_NONE;
std::atomic<bool> logIsMuted = false;
constexpr std::size_t mostErrors = 65536; // bytes

void takeLog(ggml_log_level level, const char *text, void *)
{
    const std::scoped_lock lock(logMutex);
    if (level != GGML_LOG_LEVEL_CONT)
        lastLevel = level;
    if (lastLevel == GGML_LOG_LEVEL_ERROR && errors.size() < mostErrors)
        errors += text;
    if ((lastLevel == GGML_LOG_LEVEL_ERROR || lastLevel == GGML_LOG_LEVEL_WARN) && !logIsMuted)
        std::fputs(text, stderr);
}

std::optional<std::string> metadata(const llama_model *model, const char *key)
{
    std::array<char, 128> value{};
    if (key == nullptr || llama_model_meta_val_str(model, key, value.data(), value.size()) < 0)
        return std::nullopt;
    return std::string(value.data());
}

template <typename Number>
std::optional<Number> numberOf(const llama_model *model, const char *key)
{
    const auto text = metadata(model, key);
    Number value = 0;
    if (!text || std::from_chars(text->data(), text->data() + text->size(), value).ec != std::errc())
        return std::nullopt;
    return value;
}

template <typename Number>
std::optional<Number> numberOf(const llama_model *model, llama_model_meta_key key)
{
    return numberOf<Number>(model, llama_model_meta_key_str(key));
}

std::int64_t attentionLength(const llama_model *model, const char *which)
{
    const std::string architecture = metadata(model, "general.architecture").value_or("");
    const std::string key = architecture + ".attention." + which;
    const std::int64_t heads = std::max(llama_model_n_head(model), 1);
    return numberOf<std::int64_t>(model, key.c_str()).value_or(llama_model_n_embd(model) / heads);
}

const char *roleName(ChatMessage::Role role)
{
    switch (role) {
    case ChatMessage::Role::system:
        return "system";
    case ChatMessage::Role::user:
        return "user";
    case ChatMessage::Role::assistant:
        break;
    }
    return "assistant";
}

} // namespace

void receiveLog()
{
    llama_log_set(takeLog, nullptr);
    ggml_set_abort_callback([](const char *reason) {
        std::fputs(reason, stderr);
        std::fputc('\n', stderr);
    });
}

ggml_log_callback logReceiver()
{
    return takeLog;
}

void muteLog(bool muted)
{
    logIsMuted = muted;
}

void forgetErrors()
{
    const std::scoped_lock lock(logMutex);
    errors.clear();
}

bool hasComplainedOf(const std::string &words)
{
    const std::scoped_lock lock(logMutex);
    return errors.find(words) != std::string::npos;
}

std::string reasonOfErrors(const std::string &architecture)
{
    if (hasComplainedOf("unknown model architecture"))
        return "models of the kind “" + firstCharacters(architecture, 64) + "” are not known to this version";
    return "it is damaged, incomplete, or of a kind that this version does not know";
}

bool goesOn(float, void *stop)
{
    return !static_cast<const std::stop_token *>(stop)->stop_requested();
}

std::optional<std::string> reasonNotToConverse(const llama_model *model)
{
    if (llama_model_has_encoder(model) || !llama_model_has_decoder(model) || llama_model_is_diffusion(model))
        return "it is not a model that holds a conversation";
    if (llama_vocab_type(llama_model_get_vocab(model)) == LLAMA_VOCAB_TYPE_NONE)
        return "it has no vocabulary";
    return std::nullopt;
}

std::int64_t contextBytesPerToken(const llama_model *model, std::int64_t batchSize)
{
    constexpr std::int64_t bytesPerNumber = 2; // half precision, libllama's own choice
    constexpr std::int64_t maskBytes = 4 + 2;  // for each token of a batch: one mask, and a copy in half precision
    if (llama_model_is_recurrent(model))
        return 0;
    const std::int64_t lengths = attentionLength(model, "key_length") + attentionLength(model, "value_length");
    // Both are those of the first layer, which in models of mixed layers may have none.
    const int ownHeads = llama_model_n_head_kv(model);
    const std::int64_t heads = std::max(ownHeads > 0 ? ownHeads : llama_model_n_head(model), 1);
    return lengths * heads * llama_model_n_layer(model) * bytesPerNumber + batchSize * maskBytes;
}

SamplingDefaults samplingDefaultsOf(const llama_model *model)
{
    SamplingDefaults defaults;
    defaults.temperature = numberOf<double>(model, LLAMA_MODEL_META_KEY_SAMPLING_TEMP);
    defaults.topK = numberOf<std::int32_t>(model, LLAMA_MODEL_META_KEY_SAMPLING_TOP_K);
    defaults.topP = numberOf<double>(model, LLAMA_MODEL_META_KEY_SAMPLING_TOP_P);
    defaults.minP = numberOf<double>(model, LLAMA_MODEL_META_KEY_SAMPLING_MIN_P);
    defaults.xtcProbability = numberOf<double>(model, LLAMA_MODEL_META_KEY_SAMPLING_XTC_PROBABILITY);
    defaults.xtcThreshold = numberOf<double>(model, LLAMA_MODEL_META_KEY_SAMPLING_XTC_THRESHOLD);
    defaults.penaltyLastTokens = numberOf<std::int32_t>(model, LLAMA_MODEL_META_KEY_SAMPLING_PENALTY_LAST_N);
    defaults.penaltyRepeat = numberOf<double>(model, LLAMA_MODEL_META_KEY_SAMPLING_PENALTY_REPEAT);
    return defaults;
}

std::optional<std::string> applyTemplateOf(const llama_model *model, std::span<const ChatMessage> messages)
{
    const char *const layout = llama_model_chat_template(model, nullptr);
    if (layout == nullptr)
        return std::nullopt;
    std::vector<llama_chat_message> chat;
    std::size_t characters = 0;
    for (const ChatMessage &message : messages) {
        chat.push_back({roleName(message.role), message.content.c_str()});
        characters += message.content.size();
    }
    std::string text(2 * characters + 1024, '\0');
    for (;;) {
        const int size = llama_chat_apply_template(layout, chat.data(), chat.size(), true, text.data(),
                                                   static_cast<int>(text.size()));
        if (size < 0)
            return std::nullopt;
        const bool fits = static_cast<std::size_t>(size) <= text.size();
        text.resize(static_cast<std::size_t>(size));
        if (fits)
            return text;
    }
}

std::string describe(const llama_model *model)
{
    std::array<char, 256> text{};
    llama_model_desc(model, text.data(), text.size());
    return text.data();
}

} // namespace lumora::service
