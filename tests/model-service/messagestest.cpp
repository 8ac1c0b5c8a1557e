// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "wire/messages.h"

#include <QTest>

#include <limits>
#include <map>
#include <string>

using namespace lumora::wire;

namespace {

const std::string respondBody =
    R"({"type":"respond","id":7,"instructions":"Be brief.","tools":[{"name":"clock","description":"Tells the time.",)"
    R"("schema":{"type":"object","properties":{"zone":{"type":"string"},"a":{"type":"string"}}}}],"prompt":"Grüße 👋",)"
    R"("schema":null,"options":{"sampling":"greedy","temperature":0.1,"maximumTokens":null}})";

std::string withImage(const std::string &members)
{
    std::string text = respondBody;
    return text.insert(text.size() - 1, R"(,"images":[{)" + members + "}]");
}

std::string without(std::string text, const std::string &part)
{
    const auto at = text.find(part);
    return at == std::string::npos ? std::string() : text.erase(at, part.size());
}

} // namespace

class MessagesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsARequestAsDocumented()
    {
        Respond expected;
        expected.id = 7;
        expected.instructions = "Be brief.";
        expected.tools = {{"clock", "Tells the time.",
                           R"({"type":"object","properties":{"zone":{"type":"string"},"a":{"type":"string"}}})"}};
        expected.prompt = "Grüße 👋";
        expected.options = {Sampling::greedy, 0.1, std::nullopt};
        const auto request = decodeRequest(respondBody);
        QVERIFY(request);
        QVERIFY(*request == Request(expected));
        QCOMPARE(encode(*request), respondBody);
        QVERIFY(decodeRequest(withImage(R"("width":1,"height":1,"pixels":"AQID")")));
    }

    void requestsComeBackEqual()
    {
        Respond full;
        full.id = std::numeric_limits<std::int64_t>::max();
        full.instructions = std::string("a\0b \"quoted\"\n", 13);
        full.tools = {{"one", "", "{}"}, {"two", "second", R"({"b":[1,2.5,null,true],"a":{}})"}};
        full.schema = R"({"type":"object"})";
        full.options = {Sampling::random, 1e-300, 1};
        std::string everyByte;
        for (int byte = 0; byte < 256 + 2; ++byte)
            everyByte += static_cast<char>(byte);
        full.images = {{43, 2, everyByte}, {1, 1, std::string(3, '\0')}};
        const std::vector<Request> requests = {Load{1, "/a b/ü.gguf", std::nullopt, "/mmproj.gguf"},
                                               Load{-2, "", 4096},
                                               Count{3, ""},
                                               Prepare{6, "Be \"kind\"."},
                                               Respond{},
                                               full,
                                               ToolOutput{4, "call-1", "line\nline"},
                                               Cancel{5}};
        for (const Request &request : requests)
            QVERIFY2(decodeRequest(encode(request)) == request, encode(request).c_str());
    }

    void answersComeBackEqual()
    {
        std::vector<Answer> answers = {Loaded{1, 4096, "tiny"},
                                       Loaded{1, 4096, "tiny", true},
                                       Counted{2, 0},
                                       Text{3, "é"},
                                       ToolCall{4, "call-1", "clock", R"({"zone":"UTC"})"},
                                       Finished{5, 10, 20, 25, std::nullopt},
                                       Finished{6, 0, 0, 0, R"({"title":"","keyPoints":[]})"}};
        for (const ErrorCode code : {ErrorCode::cancelled, ErrorCode::notLoaded, ErrorCode::badFile,
                                     ErrorCode::badProjector, ErrorCode::noMemory, ErrorCode::contextFull,
                                     ErrorCode::cutShort, ErrorCode::tooManyCalls, ErrorCode::internal})
            answers.emplace_back(Failed{7, code, "Something happened."});
        for (const Answer &answer : answers)
            QVERIFY2(decodeAnswer(encode(answer)) == answer, encode(answer).c_str());
    }

    void refusesWhatIsNotAMessage_data()
    {
        QTest::addColumn<QByteArray>("body");
        const std::map<const char *, std::string> bodies = {
            {"empty", ""},
            {"not JSON", "hello"},
            {"an array", "[]"},
            {"two objects", R"({"type":"cancel","id":1}{})"},
            {"bytes after a zero", std::string("{\"type\":\"cancel\",\"id\":1}\0{}", 27)},
            {"not UTF-8", "{\"type\":\"count\",\"id\":1,\"text\":\"\xC3\x28\"}"},
            {"no type", R"({"id":1})"},
            {"unknown type", R"({"type":"quit","id":1})"},
            {"no id", R"({"type":"cancel"})"},
            {"id is text", R"({"type":"cancel","id":"1"})"},
            {"id has a fraction", R"({"type":"cancel","id":1.5})"},
            {"id is too large", R"({"type":"cancel","id":9223372036854775808})"},
            {"path is missing", R"({"type":"load","id":1})"},
            {"limit is text", R"({"type":"load","id":1,"path":"","contextLimit":"4"})"},
            {"output is missing", R"({"type":"toolOutput","id":1,"call":"c"})"},
            {"schema is missing", without(respondBody, R"("schema":null,)")},
            {"prompt is missing", without(respondBody, R"("prompt":"Grüße 👋",)")},
            {"a tool's name is missing", without(respondBody, R"("name":"clock",)")},
            {"temperature is missing", without(respondBody, R"("temperature":0.1,)")},
            {"projector is a number", R"({"type":"load","id":1,"path":"","projector":4})"},
            {"an image's side is missing", withImage(R"("width":1,"pixels":"AAAA")")},
            {"an image without a pixel", withImage(R"("width":0,"height":1,"pixels":"")")},
            {"an image with sides below zero", withImage(R"("width":-1,"height":-1,"pixels":"AAAA")")},
            {"a pixel too few", withImage(R"("width":2,"height":1,"pixels":"AAAA")")},
            {"a pixel too many", withImage(R"("width":1,"height":1,"pixels":"AAAAAAAA")")},
            {"half a pixel", withImage(R"("width":1,"height":1,"pixels":"AA")")},
            {"pixels with padding", withImage(R"("width":1,"height":1,"pixels":"AAA=")")},
            {"pixels that are no base64", withImage(R"("width":1,"height":1,"pixels":"AA\u00e9")")},
            {"an image too large", withImage(R"("width":4294967297,"height":4294967297,"pixels":"AAAA")")},
            {"unknown sampling", R"({"type":"respond","id":1,"instructions":"","tools":[],"prompt":"","schema":null,)"
                                 R"("options":{"sampling":"beam","temperature":null,"maximumTokens":null}})"},
            {"nested too deep",
             R"({"type":"cancel","id":1,"x":)" + std::string(100000, '[') + std::string(100000, ']') + "}"},
            {"never closed", std::string(1000000, '{')},
        };
        for (const auto &[name, body] : bodies)
            QTest::newRow(name) << QByteArray::fromStdString(body);
    }

    void refusesWhatIsNotAMessage()
    {
        QFETCH(QByteArray, body);
        QVERIFY(!decodeRequest(body.toStdString()));
    }

    void passesOverUnknownMembers()
    {
        QVERIFY(decodeRequest(R"({"later":[1,{"a":2}],"id":1,"type":"cancel"})") == Request(Cancel{1}));
    }

    void readsNoMessageOfTheOtherDirection()
    {
        QVERIFY(!decodeAnswer(encode(Request(Cancel{1}))));
        QVERIFY(!decodeRequest(encode(Answer(Counted{1, 2}))));
        QVERIFY(!decodeAnswer(R"({"type":"failed","id":1,"code":"odd","message":"m"})"));
    }

    void refusesToWriteABrokenObject()
    {
        for (const char *const json : {"", "[]", "{", "{}x", "null"}) {
            QVERIFY_THROWS_EXCEPTION(std::invalid_argument, encode(Answer(ToolCall{1, "c", "n", json})));
            Respond respond;
            respond.schema = json;
            QVERIFY_THROWS_EXCEPTION(std::invalid_argument, encode(Request(respond)));
        }
        QVERIFY_THROWS_EXCEPTION(std::invalid_argument, encode(Answer(Text{1, "\xFF"})));
    }
};

QTEST_GUILESS_MAIN(MessagesTest)
#include "messagestest.moc"
