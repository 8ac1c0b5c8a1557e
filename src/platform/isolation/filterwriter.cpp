// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/isolation/filterwriter.h"

#include <cerrno>
#include <linux/audit.h>
#include <linux/seccomp.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace lumora {

namespace {

#if defined(__x86_64__)
constexpr std::uint32_t processor = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr std::uint32_t processor = AUDIT_ARCH_AARCH64;
#elif defined(__riscv) && __riscv_xlen == 64
constexpr std::uint32_t processor = AUDIT_ARCH_RISCV64;
#else
constexpr std::uint32_t processor = 0; // not known
#endif

} // namespace

bool FilterWriter::isPossible()
{
    const std::uint32_t verdict = SECCOMP_RET_ERRNO;
    return processor != 0 && syscall(SYS_seccomp, SECCOMP_GET_ACTION_AVAIL, 0, &verdict) == 0;
}

FilterWriter::FilterWriter(Refusal refusal)
    : m_refusal(refusal == Refusal::death ? SECCOMP_RET_KILL_PROCESS : SECCOMP_RET_ERRNO | EPERM)
{
    load(offsetof(seccomp_data, arch));
    jump(BPF_JEQ, processor, 1, 0);
    give(SECCOMP_RET_KILL_PROCESS); // the numbers of another processor's calls mean something else
    load(offsetof(seccomp_data, nr));
#if defined(__x86_64__)
    jump(BPF_JGE, 0x40000000, 0, 1); // the same calls once more, for programs with short pointers
    give(SECCOMP_RET_ERRNO | ENOSYS);
#endif
}

void FilterWriter::refuse(std::uint32_t call)
{
    jump(BPF_JEQ, call, 0, 1);
    give(m_refusal);
}

void FilterWriter::pretendMissing(std::uint32_t call)
{
    jump(BPF_JEQ, call, 0, 1);
    give(SECCOMP_RET_ERRNO | ENOSYS);
}

void FilterWriter::refuseWith(std::uint32_t call, unsigned argument, std::uint32_t value)
{
    refuseWhere(Where::itHolds, call, argument, BPF_JEQ, value);
}

void FilterWriter::refuseUnless(std::uint32_t call, unsigned argument, std::uint32_t value)
{
    refuseWhere(Where::itDoesNot, call, argument, BPF_JEQ, value);
}

void FilterWriter::refuseWithAnyOf(std::uint32_t call, unsigned argument, std::uint32_t bits)
{
    refuseWhere(Where::itHolds, call, argument, BPF_JSET, bits);
}

void FilterWriter::refuseWithout(std::uint32_t call, unsigned argument, std::uint32_t bit)
{
    refuseWhere(Where::itDoesNot, call, argument, BPF_JSET, bit);
}

bool FilterWriter::install()
{
    give(SECCOMP_RET_ALLOW);
    const sock_fprog filter = {static_cast<unsigned short>(m_code.size()), m_code.data()};
    // Without the second flag, older kernels would slow down all that this process computes.
    constexpr unsigned flags = SECCOMP_FILTER_FLAG_TSYNC | SECCOMP_FILTER_FLAG_SPEC_ALLOW;
    return syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, flags, &filter) == 0;
}

void FilterWriter::load(std::size_t offset)
{
    m_code.push_back(BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<std::uint32_t>(offset)));
}

void FilterWriter::jump(std::uint16_t comparison, std::uint32_t value, std::uint8_t whereTrue, std::uint8_t whereFalse)
{
    m_code.push_back({static_cast<std::uint16_t>(BPF_JMP | BPF_K | comparison), whereTrue, whereFalse, value});
}

void FilterWriter::give(std::uint32_t verdict)
{
    m_code.push_back(BPF_STMT(BPF_RET | BPF_K, verdict));
}

void FilterWriter::refuseWhere(Where where, std::uint32_t call, unsigned argument, std::uint16_t comparison,
                               std::uint32_t value)
{
    const std::uint8_t over = where == Where::itHolds ? 0 : 1; // the refusal, where the comparison holds
    jump(BPF_JEQ, call, 0, 4);
    load(offsetof(seccomp_data, args) + argument * sizeof(std::uint64_t));
    jump(comparison, value, over, static_cast<std::uint8_t>(1 - over));
    give(m_refusal);
    give(SECCOMP_RET_ALLOW);
}

} // namespace lumora
