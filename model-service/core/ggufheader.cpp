// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/ggufheader.h"

#include "core/failure.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace lumora::service {

namespace {

constexpr std::uint64_t largestText = 1U << 20U; // of a key or a name; values may be longer
constexpr std::uint64_t mostEntries = 1U << 20U; // of keys and of tensors
constexpr std::uint32_t mostDimensions = 4;

enum class Kind : std::uint32_t {
    string = 8,
    array = 9,
};

// Bytes of one value of each kind; 0 for the two whose values have their own lengths.
constexpr std::array<std::uint64_t, 13> kindSizes = {1, 1, 2, 2, 4, 4, 4, 1, 0, 0, 8, 8, 8};

/// The reason why a file cannot be used, until the path joins it.
struct Broken
{
    std::string reason;
};

class Descriptor
{
public:
    explicit Descriptor(const std::string &path)
        : m_value(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK))
    {
        if (m_value < 0)
            throw Broken{"it cannot be read"};
    }
    ~Descriptor() { close(m_value); }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    int value() const { return m_value; }

private:
    int m_value;
};

/// Reads a file from its start, and never past its end.
class FileCursor
{
public:
    explicit FileCursor(const std::string &path)
        : m_file(path)
    {
        struct stat status = {};
        if (fstat(m_file.value(), &status) != 0 || !S_ISREG(status.st_mode))
            throw Broken{"it is not a file"};
        m_size = static_cast<std::uint64_t>(status.st_size);
    }

    std::uint64_t size() const { return m_size; }
    std::uint64_t left() const { return m_size - m_position; }

    void skip(std::uint64_t bytes)
    {
        if (bytes > left())
            throw Broken{"it is incomplete"};
        m_position += bytes;
    }

    template <typename Number>
    Number number()
    {
        Number value = 0;
        read(&value, sizeof value);
        return value;
    }

    std::string text(std::uint64_t longest)
    {
        const auto length = number<std::uint64_t>();
        if (length > longest)
            throw Broken{"it is damaged"};
        std::string value(std::min(length, left() + 1), '\0');
        read(value.data(), value.size());
        return value;
    }

    void skipText() { skip(number<std::uint64_t>()); }

private:
    void read(void *target, std::size_t bytes)
    {
        const std::uint64_t from = m_position;
        skip(bytes);
        if (from < m_bufferStart || from + bytes > m_bufferStart + m_buffered)
            fill(from, bytes);
        std::memcpy(target, m_buffer.data() + (from - m_bufferStart), bytes);
    }

    void fill(std::uint64_t from, std::size_t needed)
    {
        m_buffer.resize(std::max<std::size_t>(needed, std::size_t{1} << 18U));
        m_bufferStart = from;
        m_buffered = 0;
        while (m_buffered < needed) {
            const ssize_t count = pread(m_file.value(), m_buffer.data() + m_buffered, m_buffer.size() - m_buffered,
                                        static_cast<off_t>(from + m_buffered));
            if (count <= 0)
                throw Broken{"it cannot be read"};
            m_buffered += static_cast<std::size_t>(count);
        }
    }

    Descriptor m_file;
    std::uint64_t m_size = 0;
    std::uint64_t m_position = 0;
    std::vector<char> m_buffer;
    std::uint64_t m_bufferStart = 0;
    std::size_t m_buffered = 0;
};

Kind readKind(FileCursor &file)
{
    const auto kind = file.number<std::uint32_t>();
    if (kind >= kindSizes.size())
        throw Broken{"it is damaged"};
    return static_cast<Kind>(kind);
}

void skipArray(FileCursor &file)
{
    const Kind kind = readKind(file);
    const auto count = file.number<std::uint64_t>();
    if (kind == Kind::array || count > file.left())
        throw Broken{"it is damaged"};
    if (kind != Kind::string)
        return file.skip(count * kindSizes.at(static_cast<std::size_t>(kind)));
    for (std::uint64_t i = 0; i < count; ++i)
        file.skipText();
}

void skipValue(FileCursor &file, Kind kind)
{
    if (kind == Kind::string)
        file.skipText();
    else if (kind == Kind::array)
        skipArray(file);
    else
        file.skip(kindSizes.at(static_cast<std::size_t>(kind)));
}

void readEntry(FileCursor &file, GgufHeader &header)
{
    constexpr auto sixteenBits = static_cast<Kind>(2);
    const std::string key = file.text(largestText);
    const Kind kind = readKind(file);
    if (key == "general.architecture" && kind == Kind::string)
        header.architecture = file.text(largestText);
    else if (key == "split.count" && kind == sixteenBits)
        header.splitCount = file.number<std::uint16_t>();
    else if (key == "split.no" && kind == sixteenBits)
        header.splitNumber = file.number<std::uint16_t>();
    else
        skipValue(file, kind);
}

/// Reads one tensor's entry; the offset of its data after the head.
std::uint64_t readTensor(FileCursor &file)
{
    file.text(largestText);
    const auto dimensions = file.number<std::uint32_t>();
    if (dimensions > mostDimensions)
        throw Broken{"it is damaged"};
    file.skip(dimensions * sizeof(std::uint64_t) + sizeof(std::uint32_t));
    return file.number<std::uint64_t>();
}

GgufHeader readHeader(FileCursor &file)
{
    GgufHeader header;
    header.fileSize = static_cast<std::int64_t>(file.size());
    if (file.size() < 4 || file.number<std::uint32_t>() != 0x46554747) // "GGUF"
        throw Broken{"it is not in the GGUF format"};
    const auto version = file.number<std::uint32_t>();
    if (version < 2 || version > 3)
        throw Broken{"its version of the GGUF format is not known"};
    header.tensorCount = file.number<std::uint64_t>();
    const auto entries = file.number<std::uint64_t>();
    if (header.tensorCount > mostEntries || entries > mostEntries)
        throw Broken{"it is damaged"};
    for (std::uint64_t i = 0; i < entries; ++i)
        readEntry(file, header);
    std::uint64_t farthest = 0;
    for (std::uint64_t i = 0; i < header.tensorCount; ++i)
        farthest = std::max(farthest, readTensor(file));
    if (farthest > file.left())
        throw Broken{"it is incomplete"};
    return header;
}

/// What the engine expects at the end of a part's name. number: from 0.
std::string partEnding(std::uint64_t number, std::uint64_t count)
{
    std::array<char, 64> ending{};
    std::snprintf(ending.data(), ending.size(), "-%05llu-of-%05llu.gguf", static_cast<unsigned long long>(number + 1),
                  static_cast<unsigned long long>(count));
    return ending.data();
}

void requireLanguageModel(const GgufHeader &header, const std::string &path)
{
    if (header.splitNumber > 0)
        throw badFile(path, "it is one part of a model that is split into several files, and not the first");
    if (header.splitCount > 1 && !path.ends_with(partEnding(0, header.splitCount)))
        throw badFile(path, "it is the first part of a split model, whose name must end with “" +
                                partEnding(0, header.splitCount) + "”");
    if (header.architecture == "clip")
        throw badFile(path, "it is the image part of another model");
    // The first part of a split model may leave all tensors to the others.
    if (header.architecture.empty() || (header.tensorCount == 0 && header.splitCount <= 1))
        throw badFile(path, "it holds no language model");
}

} // namespace

GgufHeader readGgufHeader(const std::string &path)
{
    try {
        FileCursor file(path);
        return readHeader(file);
    } catch (const Broken &broken) {
        throw badFile(path, broken.reason);
    }
}

GgufHeader readModelHeader(const std::string &path)
{
    GgufHeader header = readGgufHeader(path);
    requireLanguageModel(header, path);
    for (std::uint64_t number = 1; number < header.splitCount; ++number) {
        const std::string beginning = path.substr(0, path.size() - partEnding(0, header.splitCount).size());
        header.fileSize += readGgufHeader(beginning + partEnding(number, header.splitCount)).fileSize;
    }
    return header;
}

} // namespace lumora::service
