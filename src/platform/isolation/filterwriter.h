// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstddef>
#include <cstdint>
#include <linux/filter.h>
#include <vector>

namespace lumora {

/// Writes a filter of system calls for the kernel. What no line of it names is allowed. Of an argument, it sees the
/// lower 32 bits; the first one has the number 0.
class FilterWriter
{
public:
    /// Whether this kernel takes such filters, and we know its processor's calls.
    static bool isPossible();

    enum class Refusal {
        error, ///< the call fails with EPERM
        death, ///< of the process
    };
    explicit FilterWriter(Refusal refusal);

    void refuse(std::uint32_t call);
    /// The call fails with ENOSYS.
    void pretendMissing(std::uint32_t call);
    void refuseWith(std::uint32_t call, unsigned argument, std::uint32_t value);
    void refuseUnless(std::uint32_t call, unsigned argument, std::uint32_t value);
    void refuseWithAnyOf(std::uint32_t call, unsigned argument, std::uint32_t bits);
    void refuseWithout(std::uint32_t call, unsigned argument, std::uint32_t bit);

    /// Has the kernel use it from now on, for all threads and whatever this process starts. The process has promised
    /// before to gain no rights any more. False where the kernel does not take it.
    bool install();

private:
    enum class Where {
        itHolds,
        itDoesNot,
    };
    void load(std::size_t offset);
    void jump(std::uint16_t comparison, std::uint32_t value, std::uint8_t whereTrue, std::uint8_t whereFalse);
    void give(std::uint32_t verdict);
    void refuseWhere(Where where, std::uint32_t call, unsigned argument, std::uint16_t comparison, std::uint32_t value);

    std::uint32_t m_refusal;
    std::vector<sock_filter> m_code;
};

} // namespace lumora
