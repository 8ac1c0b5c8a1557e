// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/predictions.h"

#include "conversations/passage.h"
#include "trainer/packer.h"
#include "wire/json.h"

#include <stdexcept>

namespace lumora::training {

namespace {

using rapidjson::Value;

template <typename Range, typename Projection>
Value list(const Range &range, rapidjson::Document::AllocatorType &allocator, Projection projection)
{
    Value all(rapidjson::kArrayType);
    for (const auto &item : range)
        all.PushBack(static_cast<int>(projection(item)), allocator);
    return all;
}

} // namespace

std::string predictionLine(std::string_view exampleLine, const TrainingVocabulary &vocabulary, Network &network,
                           std::span<const float> weights)
{
    const Passage passage = makePassage(readExample(exampleLine), vocabulary);
    const Batch batch = batchOf(passage);
    const Network::Prediction prediction = network.predict(weights, batch);

    auto object = wire::parseObject(exampleLine);
    if (!object)
        throw std::runtime_error("an example is no JSON object");
    auto &allocator = object->GetAllocator();
    const auto same = [](Token token) { return token; };
    object->AddMember("tokens", list(passage.tokens, allocator, same), allocator);
    object->AddMember("places", list(batch.targets, allocator, [](const Target &target) { return target.place; }),
                      allocator);
    object->AddMember("predicted", list(prediction.tokens, allocator, same), allocator);
    return wire::jsonText(*object);
}

} // namespace lumora::training
