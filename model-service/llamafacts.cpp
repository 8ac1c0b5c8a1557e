// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "llamafacts.h"

#include <array>
#include <atomic>
#include <charconv>
#include <cstdio>
#include <string_view>

namespace lumora::service {

namespace {

// libllama's log knows one receiver in the whole process.
std::string lastError;
std::atomic<bool> logIsMuted = false;

void takeLog(ggml_log_level level, const char *text, void *)
{
    static ggml_log_level last = GGML_LOG_LEVEL_NONE;
    if (level != GGML_LOG_LEVEL_CONT)
        last = level;
    if (last == GGML_LOG_LEVEL_ERROR)
        lastError = text;
    if ((last == GGML_LOG_LEVEL_ERROR || last == GGML_LOG_LEVEL_WARN) && !logIsMuted)
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

} // namespace

void receiveLog()
{
    llama_log_set(takeLog, nullptr);
    ggml_set_abort_callback([](const char *reason) {
        std::fputs(reason, stderr);
        std::fputc('\n', stderr);
    });
}

void muteLog(bool muted)
{
    logIsMuted = muted;
}

std::string reasonOfLastError(const std::string &architecture)
{
    if (lastError.find("unknown model architecture") != std::string::npos)
        return "models of the kind “" + architecture + "” are not known to this version";
    return "it is damaged, incomplete, or of a kind that this version does not know";
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
    return lengths * llama_model_n_head_kv(model) * llama_model_n_layer(model) * bytesPerNumber + batchSize * maskBytes;
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

std::string describe(const llama_model *model)
{
    std::array<char, 256> text{};
    llama_model_desc(model, text.data(), text.size());
    return text.data();
}

} // namespace lumora::service
