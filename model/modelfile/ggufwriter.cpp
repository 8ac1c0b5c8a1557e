// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "modelfile/ggufwriter.h"

#include "modelfile/bytes.h"
#include "modelfile/ggufformat.h"

namespace lumora::training {

namespace {

void appendText(std::string &bytes, const std::string &text)
{
    append(bytes, std::uint64_t{text.size()});
    bytes += text;
}

void pad(std::string &bytes)
{
    bytes.resize((bytes.size() + gguf::alignment - 1) / gguf::alignment * gguf::alignment);
}

} // namespace

void GgufWriter::beginValue(const std::string &key, std::uint32_t type)
{
    appendText(m_values, key);
    append(m_values, type);
    ++m_valueCount;
}

void GgufWriter::add(const std::string &key, std::uint32_t value)
{
    beginValue(key, gguf::unsigned32);
    append(m_values, value);
}

void GgufWriter::add(const std::string &key, std::int32_t value)
{
    beginValue(key, gguf::signed32);
    append(m_values, value);
}

void GgufWriter::add(const std::string &key, float value)
{
    beginValue(key, gguf::float32);
    append(m_values, value);
}

void GgufWriter::add(const std::string &key, bool value)
{
    beginValue(key, gguf::boolean);
    append(m_values, static_cast<std::uint8_t>(value ? 1 : 0));
}

void GgufWriter::add(const std::string &key, const std::string &value)
{
    beginValue(key, gguf::text);
    appendText(m_values, value);
}

void GgufWriter::add(const std::string &key, const std::vector<std::string> &values)
{
    beginValue(key, gguf::array);
    append(m_values, gguf::text);
    append(m_values, std::uint64_t{values.size()});
    for (const std::string &value : values)
        appendText(m_values, value);
}

void GgufWriter::add(const std::string &key, const std::vector<std::int32_t> &values)
{
    beginValue(key, gguf::array);
    append(m_values, gguf::signed32);
    append(m_values, std::uint64_t{values.size()});
    for (const std::int32_t value : values)
        append(m_values, value);
}

void GgufWriter::addTensor(const std::string &name, std::span<const float> numbers,
                           const std::vector<std::uint64_t> &sides, NumberFormat format)
{
    if (sides.size() == 1)
        format = NumberFormat::single;
    appendText(m_tensors, name);
    append(m_tensors, static_cast<std::uint32_t>(sides.size()));
    for (const std::uint64_t side : sides)
        append(m_tensors, side);
    append(m_tensors, static_cast<std::uint32_t>(format));
    append(m_tensors, std::uint64_t{m_data.size()});
    ++m_tensorCount;
    m_data += encode(numbers, format);
    pad(m_data);
}

void GgufWriter::write(std::ostream &output) const
{
    std::string head(gguf::magic);
    append(head, gguf::version);
    append(head, m_tensorCount);
    append(head, m_valueCount);
    head += m_values;
    head += m_tensors;
    pad(head);
    output << head << m_data;
}

} // namespace lumora::training
