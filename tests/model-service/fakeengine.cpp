// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "fakeengine.h"

#include "core/failure.h"

#include <algorithm>
#include <stdexcept>

namespace lumora::service {

namespace {

constexpr Token firstPiece = 1000;

struct FakeState final : ComputedState
{
    std::size_t bytes() const override { return size; }

    std::size_t size = 0;
    std::vector<Token> held;
    std::vector<std::pair<std::size_t, std::size_t>> stretches;
};

} // namespace

std::string FakeEngine::load(const std::string &path, std::optional<std::int64_t> contextLimit, const std::stop_token &)
{
    held.clear();
    stretches.clear();
    sees = false;
    loads.push_back(path);
    if (path.ends_with(".bad")) {
        size = 0;
        throw badFile(path, "it is bad");
    }
    if (path.ends_with(".throws"))
        throw std::runtime_error("out of the blue");
    size = static_cast<std::size_t>(contextLimit.value_or(4096));
    return "fake";
}

void FakeEngine::loadProjector(const std::string &path, const std::stop_token &)
{
    if (path.ends_with(".bad"))
        throw badFile(path, "it is bad");
    sees = true;
}

std::vector<Token> FakeEngine::tokenize(std::string_view text, SpecialTokens special) const
{
    std::vector<Token> tokens;
    while (!text.empty()) {
        const auto found = std::ranges::find_if(specials, [&](const auto &mark) { return text.starts_with(mark); });
        if (special == SpecialTokens::recognised && found != specials.end()) {
            tokens.push_back(firstSpecial + static_cast<Token>(found - specials.begin()));
            text.remove_prefix(found->size());
        } else {
            tokens.push_back(static_cast<unsigned char>(text.front()));
            text.remove_prefix(1);
        }
    }
    return tokens;
}

std::string FakeEngine::tokenBytes(Token token) const
{
    if (token < 256)
        return {static_cast<char>(token)};
    for (const auto &[piece, number] : pieces)
        if (number == token)
            return piece;
    return {};
}

std::optional<std::string> FakeEngine::applyTemplate(std::span<const ChatMessage> messages) const
{
    if (!knowsTemplate)
        return std::nullopt;
    std::string text;
    for (const ChatMessage &message : messages)
        text += specials.at(static_cast<std::size_t>(message.role)) + message.content + specials.back();
    return text + specials.at(2) + turnOpening;
}

std::vector<PreparedImage> FakeEngine::prepareImages(std::span<const wire::Image> images)
{
    prepared.clear();
    std::vector<PreparedImage> made;
    const auto stretch = [this](std::int64_t length, char byte) {
        prepared.push_back({static_cast<std::size_t>(length), byte});
        return ImageStretch{prepared.size() - 1, prepared.back().size};
    };
    for (const wire::Image &image : images) {
        const char byte = image.pixels.front();
        made.push_back({std::vector<Token>{'<'}, stretch(image.width, byte), std::vector<Token>{'|'},
                        stretch(image.height, byte), std::vector<Token>{'>'}});
    }
    return made;
}

std::size_t FakeEngine::keep(std::size_t count)
{
    if (count > held.size())
        throw std::logic_error("more is to be kept than is held");
    for (const auto &[start, length] : stretches)
        if (start < count && count < start + length)
            throw std::logic_error("a part of an image is to be kept");
    held.resize(goesBack ? count : 0);
    std::erase_if(stretches, [this](const auto &stretch) { return stretch.first >= held.size(); });
    return held.size();
}

std::size_t FakeEngine::evaluateImage(std::size_t number, std::size_t position, const std::stop_token &stop)
{
    const Stretch &stretch = prepared.at(number);
    if (position != held.size() || position + stretch.size > size)
        throw std::logic_error("evaluation of an image at a wrong place");
    if (stopsAtImages || stop.stop_requested())
        return position;
    stretches.emplace_back(position, stretch.size);
    held.insert(held.end(), stretch.size, firstOfImages - stretch.byte);
    evaluations.push_back(stretch.size);
    return held.size();
}

std::size_t FakeEngine::evaluate(std::span<const Token> tokens, std::size_t position, const std::stop_token &stop)
{
    if (position != held.size() || tokens.empty() || position + tokens.size() > size || std::ranges::min(tokens) < 0)
        throw std::logic_error("evaluation at a wrong place");
    if (beforeEvaluation)
        beforeEvaluation();
    std::size_t count = std::min(tokens.size(), stopAfter.value_or(tokens.size()));
    if (stop.stop_requested())
        count = 0;
    const auto done = tokens.first(count);
    held.insert(held.end(), done.begin(), done.end());
    evaluations.push_back(count);
    return held.size();
}

std::unique_ptr<ComputedState> FakeEngine::copyState(std::size_t mostBytes) const
{
    if (bytesPerToken * held.size() > mostBytes)
        return nullptr;
    auto state = std::make_unique<FakeState>();
    state->size = bytesPerToken * held.size();
    state->held = held;
    state->stretches = stretches;
    return state;
}

bool FakeEngine::restoreState(const ComputedState &state)
{
    const auto &copy = dynamic_cast<const FakeState &>(state);
    held = copy.held;
    stretches = copy.stretches;
    return true;
}

Token FakeEngine::sample()
{
    if (grammars.empty() || grammars.back() != grammar)
        grammars.push_back(grammar);
    if (!endless.empty())
        return tokenFor(endless[endlessAt++ % endless.size()]);
    if (script.empty())
        return endToken;
    const Token token = script.front();
    script.pop_front();
    return token;
}

void FakeEngine::write(const std::vector<std::string> &written)
{
    for (const std::string &piece : written)
        script.push_back(tokenFor(piece));
}

void FakeEngine::say(const std::vector<std::string> &written)
{
    write(written);
    script.push_back(endToken);
}

Token FakeEngine::tokenFor(const std::string &piece)
{
    if (piece.size() == 1)
        return static_cast<unsigned char>(piece.front());
    return pieces.try_emplace(piece, firstPiece + static_cast<Token>(pieces.size())).first->second;
}

std::string FakeEngine::heldText() const
{
    std::string text;
    for (const Token token : held) {
        if (token <= firstOfImages)
            text += static_cast<char>(firstOfImages - token);
        else if (token >= firstSpecial && token < firstPiece)
            text += specials.at(static_cast<std::size_t>(token - firstSpecial));
        else
            text += tokenBytes(token);
    }
    return text;
}

} // namespace lumora::service
