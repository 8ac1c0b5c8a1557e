// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// lumora-pdf-text MEMORY SECONDS: writes the text of the PDF file that is its standard input to its standard output.
// MEMORY: bytes of address space that it may take beside that of the file, and the size of the largest file;
// SECONDS: of processor time. Ends with a HelperStatus; a file that is no PDF, or a locked one, is complete without
// text.

#include "documenttext.h"
#include "platform/process/confinement.h"
#include "platform/process/helperstatus.h"

#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

using namespace lumora;

namespace {

std::optional<std::uint64_t> number(const char *word)
{
    std::uint64_t value = 0;
    const char *const end = word + std::strlen(word);
    const auto [rest, error] = std::from_chars(word, end, value);
    return error == std::errc() && rest == end ? std::optional(value) : std::nullopt;
}

void writeOut(const std::string &text)
{
    std::string_view rest = text;
    while (!rest.empty()) {
        const ssize_t count = write(STDOUT_FILENO, rest.data(), rest.size());
        if (count < 0)
            throw std::system_error(errno, std::generic_category());
        rest.remove_prefix(static_cast<std::size_t>(count));
    }
}

} // namespace

int main(int argc, char **argv)
{
    const auto memory = argc == 3 ? number(argv[1]) : std::nullopt;
    const auto seconds = argc == 3 ? number(argv[2]) : std::nullopt;
    struct stat facts = {};
    if (!memory || !seconds || fstat(STDIN_FILENO, &facts) != 0 || !S_ISREG(facts.st_mode))
        return unable;
    const auto size = static_cast<std::uint64_t>(facts.st_size);
    if (size > *memory)
        return incomplete;
    if (!confine(*memory + size, *seconds, {"/etc/fonts", "/var/cache/fontconfig"}))
        return unable;
    // A file that lies in memory as it lies on the disk takes none that could not be had back.
    void *const bytes = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, STDIN_FILENO, 0);
    if (bytes == MAP_FAILED)
        return incomplete;
    try {
        pdf::readText({static_cast<const char *>(bytes), size}, writeOut);
        return complete;
    } catch (const std::exception &) {
        return incomplete;
    }
}
