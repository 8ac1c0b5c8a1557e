// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "trainer/checkpoint.h"

#include "trainer/builtinmodel.h"

#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <type_traits>

namespace lumora::training {

namespace {

constexpr std::string_view magic = "LumoraCheckpoint1";

// The shape stands in the file as it does in memory.
static_assert(std::is_trivially_copyable_v<Shape>);

template <typename Value>
void append(std::string &bytes, const Value &value)
{
    bytes.append(reinterpret_cast<const char *>(&value), sizeof value);
}

void append(std::string &bytes, const std::vector<float> &numbers)
{
    bytes.append(reinterpret_cast<const char *>(numbers.data()), numbers.size() * sizeof(float));
}

class Reader
{
public:
    explicit Reader(std::string_view bytes)
        : m_bytes(bytes)
    {
    }

    void take(void *target, std::size_t size)
    {
        if (m_bytes.size() < size)
            throw std::runtime_error("the checkpoint is cut off");
        std::memcpy(target, m_bytes.data(), size);
        m_bytes.remove_prefix(size);
    }

    template <typename Value>
    Value take()
    {
        Value value{};
        take(&value, sizeof value);
        return value;
    }

    std::vector<float> numbers(std::size_t count)
    {
        std::vector<float> all(count);
        take(all.data(), count * sizeof(float));
        return all;
    }

private:
    std::string_view m_bytes;
};

} // namespace

void writeCheckpoint(const Checkpoint &checkpoint, const Shape &shape, const std::string &path)
{
    std::string bytes(magic);
    append(bytes, shape);
    append(bytes, checkpoint.tokens);
    append(bytes, checkpoint.supervised);
    append(bytes, checkpoint.seconds);
    append(bytes, checkpoint.optimiser.steps);
    append(bytes, checkpoint.weights);
    append(bytes, checkpoint.optimiser.means);
    append(bytes, checkpoint.optimiser.squares);
    replaceFile(path, bytes);
}

std::optional<Checkpoint> readCheckpoint(const std::string &path, const Shape &shape)
{
    if (!std::filesystem::exists(path))
        return std::nullopt;
    const std::string bytes = readFile(path);
    if (!bytes.starts_with(magic))
        throw std::runtime_error(path + " is no checkpoint");
    Reader reader(std::string_view(bytes).substr(magic.size()));
    if (!(reader.take<Shape>() == shape))
        throw std::runtime_error("the checkpoint " + path + " is of a model of another shape");
    Checkpoint checkpoint;
    checkpoint.tokens = reader.take<std::int64_t>();
    checkpoint.supervised = reader.take<std::int64_t>();
    checkpoint.seconds = reader.take<double>();
    checkpoint.optimiser.steps = reader.take<std::int64_t>();
    const std::size_t size = WeightLayout(shape).size();
    checkpoint.weights = reader.numbers(size);
    checkpoint.optimiser.means = reader.numbers(size);
    checkpoint.optimiser.squares = reader.numbers(size);
    return checkpoint;
}

} // namespace lumora::training
