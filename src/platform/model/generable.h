// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/generatedcontent.h"
#include "platform/model/generationschema.h"

#include <concepts>

namespace lumora {

/// A record that a model can generate: it gives its schema, and converts from and to generated content.
/// The conversion from content throws ConversionError.
template <typename T>
concept Generable = requires(const T &value, const GeneratedContent &content) {
    {
        T::generationSchema()
    } -> std::convertible_to<GenerationSchema>;
    {
        T::fromGeneratedContent(content)
    } -> std::same_as<T>;
    {
        value.generatedContent()
    } -> std::convertible_to<GeneratedContent>;
};

} // namespace lumora
