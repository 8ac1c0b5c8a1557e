// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/isolation/landlock.h"

#include <algorithm>
#include <cstdint>
#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace lumora::landlock {

namespace {

// Later than the header that we build with, which has the bits before these: Documentation/userspace-api/landlock.rst
// of the kernel.
constexpr std::uint64_t truncate = 1U << 14U;      // from version 3
constexpr std::uint64_t controlDevice = 1U << 15U; // from version 5
constexpr std::uint64_t allNetwork = 3;            // from version 4: TCP, bound and connected
constexpr std::uint64_t allScopes = 3;             // from version 6: abstract sockets and signals

constexpr std::uint64_t reading = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR;
constexpr std::uint64_t ofFiles = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_WRITE_FILE | controlDevice;

/// What the kernel takes; one that knows less wants the rest to be zero.
struct Ruleset
{
    std::uint64_t files = 0;
    std::uint64_t network = 0;
    std::uint64_t scopes = 0;
};

/// All that this version can refuse.
Ruleset allOf(int version)
{
    Ruleset rules;
    rules.files = (LANDLOCK_ACCESS_FS_MAKE_SYM << 1U) - 1; // version 1 ends with it
    if (version >= 2)
        rules.files |= LANDLOCK_ACCESS_FS_REFER;
    if (version >= 3)
        rules.files |= truncate;
    if (version >= 4)
        rules.network = allNetwork;
    if (version >= 5)
        rules.files |= controlDevice;
    if (version >= 6)
        rules.scopes = allScopes;
    return rules;
}

class Descriptor
{
public:
    explicit Descriptor(long value)
        : m_value(static_cast<int>(value))
    {
    }
    ~Descriptor()
    {
        if (isOpen())
            close(m_value);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    bool isOpen() const { return m_value >= 0; }
    int value() const { return m_value; }

private:
    int m_value;
};

bool allow(const Descriptor &rules, const std::string &path, std::uint64_t access)
{
    const Descriptor place(open(path.c_str(), O_PATH | O_CLOEXEC));
    struct stat facts = {};
    if (!place.isOpen() || fstat(place.value(), &facts) != 0)
        return true; // nothing to be allowed
    landlock_path_beneath_attr rule = {};
    rule.allowed_access = S_ISDIR(facts.st_mode) ? access : access & ofFiles;
    rule.parent_fd = place.value();
    return syscall(SYS_landlock_add_rule, rules.value(), LANDLOCK_RULE_PATH_BENEATH, &rule, 0) == 0;
}

} // namespace

int version()
{
    const long answer = syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    return std::max(static_cast<int>(answer), 0);
}

bool restrictTo(const Reach &reach)
{
    const Ruleset all = allOf(version());
    const std::uint64_t control = (reading | LANDLOCK_ACCESS_FS_WRITE_FILE | controlDevice) & all.files;
    const Descriptor rules(syscall(SYS_landlock_create_ruleset, &all, sizeof all, 0));
    const auto allowEach = [&rules](const std::vector<std::string> &paths, std::uint64_t access) {
        return std::ranges::all_of(paths, [&](const std::string &path) { return allow(rules, path, access); });
    };
    return rules.isOpen() && allowEach(reach.files, reading) && allowEach(reach.devices, control) &&
           syscall(SYS_landlock_restrict_self, rules.value(), 0) == 0;
}

} // namespace lumora::landlock
