// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/machine.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <limits>
#include <optional>
#include <sched.h>
#include <set>
#include <sstream>
#include <string_view>

namespace lumora::service {

namespace {

constexpr std::int64_t smallModel = std::int64_t{32} * 1024 * 1024;
constexpr std::int64_t unlimited = std::numeric_limits<std::int64_t>::max();

std::optional<std::string> firstLine(const std::string &path)
{
    std::ifstream file(path);
    std::string line;
    return std::getline(file, line) ? std::optional(line) : std::nullopt;
}

std::optional<std::int64_t> number(const std::optional<std::string> &text)
{
    std::int64_t value = 0;
    if (!text || std::from_chars(text->data(), text->data() + text->size(), value).ec != std::errc())
        return std::nullopt;
    return value;
}

/// The number behind a name in a file that has one such pair on each line.
std::optional<std::int64_t> numberOf(std::string_view name, const std::string &path)
{
    std::ifstream file(path);
    std::string line;
    while (std::getline(file, line)) {
        std::istringstream words(line);
        std::string first;
        std::int64_t value = 0;
        if (words >> first >> value && first == name)
            return value;
    }
    return std::nullopt;
}

std::int64_t kernelsEstimate(const std::string &root)
{
    const auto kibibytes = numberOf("MemAvailable:", root + "/proc/meminfo");
    return kibibytes ? *kibibytes * 1024 : unlimited;
}

/// The path of this process's group, such as /user.slice/app.scope, in the one hierarchy that newer systems have.
std::string groupPath(const std::string &root)
{
    std::ifstream file(root + "/proc/self/cgroup");
    std::string line;
    while (std::getline(file, line))
        if (line.starts_with("0::"))
            return line.substr(3);
    return {};
}

/// What one group leaves. What it has read from files and not used lately is given back where memory is wanted.
std::int64_t leftIn(const std::string &folder)
{
    const auto limit = number(firstLine(folder + "/memory.max"));
    const auto used = number(firstLine(folder + "/memory.current"));
    if (!limit || !used)
        return unlimited;
    const std::int64_t kept = *used - numberOf("inactive_file", folder + "/memory.stat").value_or(0);
    return std::max<std::int64_t>(*limit - std::max<std::int64_t>(kept, 0), 0);
}

/// What the group and every group around it leave. Inside a container, the outermost one has a limit, too.
std::int64_t groupLimit(const std::string &root)
{
    const std::string groups = root + "/sys/fs/cgroup";
    std::int64_t left = unlimited;
    for (std::filesystem::path path = groupPath(root); path.has_relative_path(); path = path.parent_path())
        left = std::min(left, leftIn(groups + path.string()));
    return std::min(left, leftIn(groups));
}

} // namespace

std::int64_t availableMemory(const std::string &root)
{
    return std::min(kernelsEstimate(root), groupLimit(root));
}

int physicalCores(const std::string &root)
{
    cpu_set_t allowed;
    CPU_ZERO(&allowed);
    if (sched_getaffinity(0, sizeof allowed, &allowed) != 0)
        return 1;
    const std::string processors = root + "/sys/devices/system/cpu/cpu";
    std::set<std::string> cores;
    for (std::size_t cpu = 0; cpu < CPU_SETSIZE; ++cpu) {
        if (!CPU_ISSET(cpu, &allowed))
            continue;
        const std::string folder = processors + std::to_string(cpu);
        cores.insert(firstLine(folder + "/topology/thread_siblings_list").value_or(folder));
    }
    return std::max<int>(static_cast<int>(cores.size()), 1);
}

int threadsFor(std::int64_t modelBytes, int cores)
{
    return modelBytes < smallModel ? 1 : cores;
}

} // namespace lumora::service
