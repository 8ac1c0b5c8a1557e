// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "conversations/example.h"

#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace lumora::training {

/// Examples that a command writes to its standard output, one a line, while they are read. "{seed}" in the command
/// stands for a number; an endless stream runs the command again, with the next number, whenever it has ended.
class ExampleStream
{
public:
    enum class Ends {
        withTheCommand,
        never,
    };

    ExampleStream(std::string command, std::int64_t seed, Ends ends);

    /// Nothing at the end. Throws std::runtime_error where the command fails or writes no examples.
    std::optional<Example> next();

    /// All that are left. Throws likewise.
    void forEach(const std::function<void(const Example &)> &action);

private:
    struct Closer
    {
        void operator()(std::FILE *pipe) const;
    };

    void start();
    std::optional<std::string> readLine();
    void expectSuccess();

    std::string m_command;
    std::int64_t m_seed;
    Ends m_ends;
    std::unique_ptr<std::FILE, Closer> m_pipe;
    std::int64_t m_read = 0; // examples of this run of the command
};

} // namespace lumora::training
