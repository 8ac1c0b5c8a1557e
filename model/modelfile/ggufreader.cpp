// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "modelfile/ggufreader.h"

#include "modelfile/ggufformat.h"
#include "modelfile/numberformats.h"

#include <cstring>
#include <stdexcept>
#include <utility>

namespace lumora::training {

namespace {

template <typename Map>
const auto &entry(const Map &map, const std::string &key)
{
    const auto found = map.find(key);
    if (found == map.end())
        throw std::runtime_error("the model file does not say " + key);
    return found->second;
}

} // namespace

GgufReader::GgufReader(std::string bytes)
    : m_bytes(std::move(bytes))
    , m_rest(m_bytes)
{
    if (!m_rest.starts_with(gguf::magic))
        throw std::runtime_error("this is no GGUF file");
    m_rest.remove_prefix(gguf::magic.size());
    if (take<std::uint32_t>() != gguf::version)
        throw std::runtime_error("this GGUF file is of another version");
    const auto tensors = take<std::uint64_t>();
    const auto values = take<std::uint64_t>();
    for (std::uint64_t i = 0; i < values; ++i)
        takeValue();
    for (std::uint64_t i = 0; i < tensors; ++i)
        takeTensor();
    const std::size_t head = m_bytes.size() - m_rest.size();
    m_dataStart = (head + gguf::alignment - 1) / gguf::alignment * gguf::alignment;
}

template <typename Number>
Number GgufReader::take()
{
    Number number{};
    if (m_rest.size() < sizeof number)
        throw std::runtime_error("the model file ends too early");
    std::memcpy(&number, m_rest.data(), sizeof number);
    m_rest.remove_prefix(sizeof number);
    return number;
}

std::string GgufReader::takeText()
{
    const auto size = take<std::uint64_t>();
    if (m_rest.size() < size)
        throw std::runtime_error("the model file ends too early");
    std::string text(m_rest.substr(0, size));
    m_rest.remove_prefix(size);
    return text;
}

void GgufReader::takeValue()
{
    const std::string key = takeText();
    switch (take<std::uint32_t>()) {
    case gguf::unsigned32:
        m_numbers[key] = take<std::uint32_t>();
        break;
    case gguf::signed32:
        m_numbers[key] = take<std::int32_t>();
        break;
    case gguf::float32:
        m_numbers[key] = take<float>();
        break;
    case gguf::boolean:
        m_numbers[key] = take<std::uint8_t>();
        break;
    case gguf::text:
        m_texts[key] = takeText();
        break;
    case gguf::array:
        takeArray(key);
        break;
    default:
        throw std::runtime_error("the model file says " + key + " in a way that is not understood");
    }
}

void GgufReader::takeArray(const std::string &key)
{
    const auto type = take<std::uint32_t>();
    const auto count = take<std::uint64_t>();
    for (std::uint64_t i = 0; i < count; ++i) {
        if (type == gguf::text)
            m_lists[key].push_back(takeText());
        else
            take<std::int32_t>(); // the kinds of tokens; they follow from the vocabulary
    }
}

void GgufReader::takeTensor()
{
    const std::string name = takeText();
    const auto sides = take<std::uint32_t>();
    Tensor tensor{1, 0, 0};
    for (std::uint32_t i = 0; i < sides; ++i)
        tensor.count *= take<std::uint64_t>();
    tensor.format = take<std::uint32_t>();
    tensor.offset = take<std::uint64_t>();
    m_tensors[name] = tensor;
}

double GgufReader::number(const std::string &key) const
{
    return entry(m_numbers, key);
}

const std::string &GgufReader::text(const std::string &key) const
{
    return entry(m_texts, key);
}

const std::vector<std::string> &GgufReader::texts(const std::string &key) const
{
    return entry(m_lists, key);
}

std::vector<float> GgufReader::tensor(const std::string &name) const
{
    const Tensor &tensor = entry(m_tensors, name);
    const auto format = static_cast<NumberFormat>(tensor.format);
    if (format != NumberFormat::single && format != NumberFormat::half && format != NumberFormat::eightBits)
        throw std::runtime_error("the numbers of the tensor " + name + " stand in a format that is not understood");
    const std::size_t size = encodedSize(tensor.count, format);
    const std::size_t start = m_dataStart + tensor.offset;
    if (start > m_bytes.size() || m_bytes.size() - start < size)
        throw std::runtime_error("the model file ends within the tensor " + name);
    return decode(std::string_view(m_bytes).substr(start, size), tensor.count, format);
}

} // namespace lumora::training
