// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

// A model service for tests. A model file "GGUF <word>" says how loading goes, a projector file the same, and a prompt
// "<word> …" how the reply goes.

#include <array>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <map>
#include <poll.h>
#include <string>
#include <unistd.h>
#include <wire/frame.h>
#include <wire/messages.h>

using namespace lumora;

namespace {

wire::FrameReader reader;

void writeAll(const std::string &bytes)
{
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count = ::write(STDOUT_FILENO, bytes.data() + done, bytes.size() - done);
        if (count <= 0)
            ::_exit(0);
        done += static_cast<size_t>(count);
    }
}

void answer(const wire::Answer &message)
{
    writeAll(wire::frame(wire::encode(message)));
}

void readMore()
{
    std::array<char, 65536> buffer{};
    const ssize_t count = ::read(STDIN_FILENO, buffer.data(), buffer.size());
    if (count <= 0)
        ::_exit(0);
    reader.append({buffer.data(), static_cast<size_t>(count)});
}

wire::Request nextRequest()
{
    for (;;) {
        if (const auto body = reader.next())
            return wire::decodeRequest(*body).value();
        readMore();
    }
}

// Waits for a cancel, for as long as a token may take.
bool isCancelled(int milliseconds)
{
    pollfd input{STDIN_FILENO, POLLIN, 0};
    if (::poll(&input, 1, milliseconds) <= 0)
        return false;
    return std::holds_alternative<wire::Cancel>(nextRequest());
}

[[noreturn]] void hang()
{
    // Deaf to everything polite, the end of the input included.
    std::signal(SIGTERM, SIG_IGN);
    for (;;)
        ::pause();
}

[[noreturn]] void dieOf(int signal)
{
    std::signal(signal, SIG_DFL);
    std::raise(signal);
    std::abort();
}

bool loadProjector(const wire::Load &request)
{
    if (!request.projector)
        return false;
    std::ifstream file(*request.projector);
    std::string magic;
    std::string word;
    file >> magic >> word;
    if (word == "kill")
        dieOf(SIGKILL);
    if (word == "crash") {
        answer(wire::Failed{request.id, wire::ErrorCode::badProjector, "It crashed."});
        ::_exit(3);
    }
    return word == "good";
}

void load(const wire::Load &request)
{
    std::ofstream(request.path + ".loads", std::ios::app) << (request.projector ? 'p' : '.');
    std::ifstream file(request.path);
    std::string magic;
    std::string word;
    std::int64_t contextSize = 1000;
    file >> magic >> word >> contextSize;
    const bool readsImages = loadProjector(request);
    if (word == "bad")
        answer(wire::Failed{request.id, wire::ErrorCode::badFile, "This file is broken."});
    else if (word == "memory")
        answer(wire::Failed{request.id, wire::ErrorCode::noMemory, "There is not enough memory."});
    else if (word == "internal")
        answer(wire::Failed{request.id, wire::ErrorCode::internal, "Something went wrong."});
    else if (word == "kill")
        dieOf(SIGKILL);
    else if (word == "crash")
        dieOf(SIGABRT);
    else if (word == "illegal")
        dieOf(SIGILL);
    else if (word == "slow")
        while (!isCancelled(1000)) {
        }
    else
        answer(wire::Loaded{request.id, contextSize, "a fake", readsImages});
}

void finish(std::int64_t id, std::int64_t outputTokens)
{
    answer(wire::Finished{id, 7, outputTokens, 0, {}});
}

void stream(const wire::Respond &request)
{
    do {
        answer(wire::Text{request.id, "la "});
    } while (!isCancelled(5));
    answer(wire::Failed{request.id, wire::ErrorCode::cancelled, "Cancelled."});
}

void callTool(const wire::Respond &request)
{
    answer(wire::Text{request.id, "Asking"});
    answer(wire::ToolCall{request.id, "call 1", request.tools.at(0).name, R"({"question":"why"})"});
    const auto output = std::get<wire::ToolOutput>(nextRequest());
    answer(wire::Text{request.id, ": " + output.call + " gave " + output.output});
    finish(request.id, 3);
}

void showEnvironment(const wire::Respond &request)
{
    for (char **variable = environ; *variable; ++variable)
        answer(wire::Text{request.id, std::string(*variable) + "\n"});
    std::array<char, 4096> folder{};
    answer(wire::Text{request.id, "in " + std::string(::getcwd(folder.data(), folder.size()))});
    finish(request.id, 1);
}

void makeNoise(const wire::Respond &request)
{
    const std::string line(1000, '!');
    for (int count = 0; count < 2000; ++count)
        ::write(STDERR_FILENO, line.data(), line.size());
    finish(request.id, 1);
}

void say(const wire::Respond &request, const std::string &text)
{
    answer(wire::Text{request.id, text});
    finish(request.id, 2);
}

void respond(const wire::Respond &request)
{
    using Behaviour = std::function<void(const wire::Respond &)>;
    static const std::map<std::string, Behaviour> behaviours{
        {"stream", stream},
        {"tool", callTool},
        {"environment", showEnvironment},
        {"noise", makeNoise},
        {"pid", [](const auto &it) { say(it, std::to_string(::getpid())); }},
        {"echo", [](const auto &it) { say(it, wire::encode(wire::Request(it))); }},
        {"structured",
         [](const auto &it) {
             answer(wire::Finished{it.id, 1, 2, 3, R"({"title":"A"})"});
         }},
        {"fail",
         [](const auto &it) {
             answer(wire::Failed{it.id, wire::ErrorCode::contextFull, "Too much."});
         }},
        {"abort", [](const auto &) { dieOf(SIGABRT); }},
        {"kill", [](const auto &) { dieOf(SIGKILL); }},
        {"terminate", [](const auto &) { dieOf(SIGTERM); }},
        {"exit", [](const auto &) { ::_exit(3); }},
        {"hang", [](const auto &) { hang(); }},
        {"huge", [](const auto &) { writeAll("\xff\xff\xff\xff"); }},
        {"nonsense", [](const auto &) { writeAll(wire::frame("[1]")); }},
        {"senseless",
         [](const auto &it) {
             answer(wire::Counted{it.id, 1});
         }},
    };
    const std::string word = request.prompt.substr(0, request.prompt.find_first_of(" \n"));
    if (word != "echo" && word != "pid" && word != "environment")
        answer(wire::Text{request.id, "So far "});
    behaviours.at(word)(request);
}

void count(const wire::Count &request)
{
    if (request.text == "abort")
        dieOf(SIGABRT);
    if (request.text == "hang")
        hang();
    if (request.text == "fail")
        answer(wire::Failed{request.id, wire::ErrorCode::internal, "Cannot count."});
    else
        answer(wire::Counted{request.id, static_cast<std::int64_t>(request.text.size())});
}

} // namespace

int main()
{
    for (;;) {
        const wire::Request request = nextRequest();
        if (const auto *loading = std::get_if<wire::Load>(&request))
            load(*loading);
        else if (const auto *counting = std::get_if<wire::Count>(&request))
            count(*counting);
        else if (const auto *responding = std::get_if<wire::Respond>(&request))
            respond(*responding);
    }
}
