// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "modelfile/numberformats.h"

#include <cstdint>
#include <ostream>
#include <span>
#include <string>
#include <vector>

namespace lumora::training {

/// Collects what a GGUF file says, and writes it (version 3).
class GgufWriter
{
public:
    void add(const std::string &key, std::uint32_t value);
    void add(const std::string &key, std::int32_t value);
    void add(const std::string &key, float value);
    void add(const std::string &key, bool value);
    void add(const std::string &key, const std::string &value);
    void add(const std::string &key, const char *value) { add(key, std::string(value)); }
    void add(const std::string &key, const std::vector<std::string> &values);
    void add(const std::string &key, const std::vector<std::int32_t> &values);

    /// sides: the innermost first. A vector's numbers are always written in single precision.
    void addTensor(const std::string &name, std::span<const float> numbers, const std::vector<std::uint64_t> &sides,
                   NumberFormat format);

    void write(std::ostream &output) const;

private:
    void beginValue(const std::string &key, std::uint32_t type);

    std::string m_values;
    std::uint64_t m_valueCount = 0;
    std::string m_tensors; // what is said about them
    std::uint64_t m_tensorCount = 0;
    std::string m_data;
};

} // namespace lumora::training
