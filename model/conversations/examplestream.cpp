// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "conversations/examplestream.h"

#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace lumora::training {

void ExampleStream::Closer::operator()(std::FILE *pipe) const
{
    ::pclose(pipe);
}

ExampleStream::ExampleStream(std::string command, std::int64_t seed, Ends ends)
    : m_command(std::move(command))
    , m_seed(seed)
    , m_ends(ends)
{
    start();
}

void ExampleStream::start()
{
    std::string command = m_command;
    const std::string place = "{seed}";
    if (const std::size_t at = command.find(place); at != std::string::npos)
        command.replace(at, place.size(), std::to_string(m_seed));
    m_pipe.reset(::popen(command.c_str(), "r")); // NOLINT(cert-env33-c): the command is the caller's
    if (!m_pipe)
        throw std::runtime_error("the command could not be started: " + command);
    m_read = 0;
}

std::optional<Example> ExampleStream::next()
{
    if (!m_pipe)
        return std::nullopt;
    if (const auto line = readLine()) {
        ++m_read;
        return readExample(*line);
    }
    expectSuccess();
    if (m_ends == Ends::withTheCommand)
        return std::nullopt;
    ++m_seed;
    start();
    return next();
}

void ExampleStream::forEach(const std::function<void(const Example &)> &action)
{
    for (;;) {
        const auto example = next();
        if (!example)
            return;
        action(*example);
    }
}

std::optional<std::string> ExampleStream::readLine()
{
    std::string line;
    for (int byte = std::getc(m_pipe.get()); byte != EOF; byte = std::getc(m_pipe.get())) {
        if (byte == '\n')
            return line;
        line += static_cast<char>(byte);
    }
    return line.empty() ? std::nullopt : std::optional(line);
}

void ExampleStream::expectSuccess()
{
    if (::pclose(m_pipe.release()) != 0 || m_read == 0)
        throw std::runtime_error("the command that makes examples failed: " + m_command);
}

} // namespace lumora::training
