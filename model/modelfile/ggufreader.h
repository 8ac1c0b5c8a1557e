// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace lumora::training {

/// A GGUF file that GgufWriter has written. Values of types that it does not write are not understood.
class GgufReader
{
public:
    /// bytes: the whole file. Throws std::runtime_error that says what is wrong with it.
    explicit GgufReader(std::string bytes);

    // Each throws std::runtime_error where the file has no such value or tensor.
    double number(const std::string &key) const;
    const std::string &text(const std::string &key) const;
    const std::vector<std::string> &texts(const std::string &key) const;
    std::vector<float> tensor(const std::string &name) const;

private:
    struct Tensor
    {
        std::size_t count = 0;
        std::uint32_t format = 0;
        std::uint64_t offset = 0;
    };

    template <typename Number>
    Number take();
    std::string takeText();
    void takeValue();
    void takeArray(const std::string &key);
    void takeTensor();

    std::string m_bytes;
    std::string_view m_rest;
    std::map<std::string, double> m_numbers;
    std::map<std::string, std::string> m_texts;
    std::map<std::string, std::vector<std::string>> m_lists;
    std::map<std::string, Tensor> m_tensors;
    std::size_t m_dataStart = 0;
};

} // namespace lumora::training
