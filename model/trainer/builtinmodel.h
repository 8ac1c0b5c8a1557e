// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "modelfile/numberformats.h"
#include "tokenizer/tokenizer.h"
#include "trainer/shape.h"

#include <string>
#include <vector>

namespace lumora::training {

struct BuiltInModel
{
    Shape shape;
    std::vector<float> weights; ///< as WeightLayout orders them
};

/// The model as a GGUF file with its vocabulary, layout of messages, sampling defaults and licence.
/// Throws std::runtime_error where it cannot be written; then a file that was there is as it was.
void writeModel(const BuiltInModel &model, const Tokenizer &tokenizer, NumberFormat format, const std::string &path);

/// The reverse. Throws std::runtime_error where the file is no such model, or one of another vocabulary.
BuiltInModel readModel(const std::string &path, const Tokenizer &tokenizer);

/// Replaces the file as a whole. Throws std::runtime_error.
void replaceFile(const std::string &path, const std::string &bytes);

/// All of a file. Throws std::runtime_error.
std::string readFile(const std::string &path);

} // namespace lumora::training
