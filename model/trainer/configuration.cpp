// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/configuration.h"

#include "wire/json.h"

#include <algorithm>
#include <stdexcept>

namespace lumora::training {

namespace {

using rapidjson::Value;

/// Reads members of an object, and knows at the end whether it had others.
class Members
{
public:
    Members(const Value &object, std::string what)
        : m_object(object)
        , m_what(std::move(what))
    {
        if (!object.IsObject())
            throw std::runtime_error(m_what + " is no JSON object");
    }

    template <typename Number>
    void number(std::string_view name, Number &target)
    {
        if (const Value *const value = find(name)) {
            expect(value->IsNumber(), name);
            target = static_cast<Number>(value->GetDouble());
        }
    }

    void text(std::string_view name, std::string &target)
    {
        if (const Value *const value = find(name)) {
            expect(value->IsString(), name);
            target = std::string(wire::view(*value));
        }
    }

    const Value *find(std::string_view name)
    {
        const Value *const value = wire::member(m_object, name);
        m_found += value != nullptr ? 1 : 0;
        return value;
    }

    void expectNoOthers() const { expect(m_found == m_object.MemberCount(), "of another name"); }

private:
    void expect(bool condition, std::string_view name) const
    {
        if (!condition)
            throw std::runtime_error(m_what + " has a wrong member: " + std::string(name));
    }

    const Value &m_object;
    std::string m_what;
    rapidjson::SizeType m_found = 0;
};

Shape readShape(const Value &object)
{
    Shape shape;
    Members members(object, "the shape");
    members.number("vocabulary", shape.vocabulary);
    members.number("width", shape.width);
    members.number("layers", shape.layers);
    members.number("heads", shape.heads);
    members.number("keyHeads", shape.keyHeads);
    members.number("headSize", shape.headSize);
    members.number("hidden", shape.hidden);
    members.number("context", shape.context);
    members.number("ropeBase", shape.ropeBase);
    members.expectNoOthers();
    return shape;
}

Phase readPhase(const Value &object)
{
    Phase phase;
    Members members(object, "a phase");
    members.number("untilTokens", phase.untilTokens);
    members.text("examples", phase.examples);
    members.number("copyShare", phase.copyShare);
    members.number("longestPassage", phase.longestPassage);
    members.number("tokensPerStep", phase.tokensPerStep);
    members.expectNoOthers();
    return phase;
}

} // namespace

const Phase &Configuration::phaseAt(std::int64_t tokens) const
{
    const auto found =
        std::ranges::find_if(phases, [tokens](const Phase &phase) { return tokens < phase.untilTokens; });
    return found == phases.end() ? phases.back() : *found;
}

double Configuration::rateAt(double progress, std::int64_t step) const
{
    const double warmth = std::min(1.0, double(step) / warmUpSteps);
    const double left = (1 - progress) / (1 - constantShare);
    return learningRate * warmth * std::clamp(left, lastRateShare, 1.0);
}

Configuration readConfiguration(std::string_view json)
{
    const auto object = wire::parseObject(json);
    if (!object)
        throw std::runtime_error("the configuration is no JSON object");
    Configuration configuration;
    Members members(*object, "the configuration");
    members.number("threads", configuration.threads);
    members.number("learningRate", configuration.learningRate);
    members.number("warmUpSteps", configuration.warmUpSteps);
    members.number("constantShare", configuration.constantShare);
    members.number("lastRateShare", configuration.lastRateShare);
    members.text("heldOutExamples", configuration.heldOutExamples);
    members.number("heldOutMinutes", configuration.heldOutMinutes);
    members.number("seed", configuration.seed);
    if (const Value *const shape = members.find("shape"))
        configuration.shape = readShape(*shape);
    if (const Value *const phases = members.find("phases"); phases != nullptr && phases->IsArray())
        for (const Value &phase : phases->GetArray())
            configuration.phases.push_back(readPhase(phase));
    if (configuration.phases.empty())
        throw std::runtime_error("the configuration has no phases");
    members.expectNoOthers();
    return configuration;
}

} // namespace lumora::training
