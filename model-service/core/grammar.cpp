// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/grammar.h"

#include "core/failure.h"
#include "wire/json.h"

#include <array>
#include <utility>

namespace lumora::service {

namespace {

using rapidjson::Value;
using wire::member;
using wire::view;

// Rules that every grammar shares; those that none names cost nothing.
constexpr std::string_view commonRules = R"(ws ::= (" " | "\n" [ \t]{0,16})?
string ::= "\"" character* "\""
character ::= [^"\\\x00-\x1F\x7F] | "\\" escape
escape ::= ["\\/bfnrt] | "u" unit
unit ::= [0-9a-cA-CefEF] hex{3} | [dD] [0-7] hex{2} | [dD] [89abAB] hex{2} "\\u" [dD] [c-fC-F] hex{2}
hex ::= [0-9a-fA-F]
integer ::= "-"? ("0" | [1-9] [0-9]{0,14})
number ::= integer ("." [0-9]{1,15})? ([eE] [-+]? [0-9]{1,2})?
boolean ::= "true" | "false"
null ::= "null"
)";

constexpr std::array<std::string_view, 5> plainTypes = {"string", "number", "integer", "boolean", "null"};

/// A GBNF literal of exactly this text.
std::string literal(std::string_view text)
{
    std::string quoted = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\')
            quoted += '\\';
        quoted += character;
    }
    return quoted + '"';
}

/// A GBNF literal of the text as a JSON string, which has no control characters left.
std::string stringLiteral(std::string_view text)
{
    return literal(
        wire::jsonText(Value(rapidjson::StringRef(text.data(), static_cast<rapidjson::SizeType>(text.size())))));
}

/// Collects rules while it turns schemas into right-hand sides.
class Rules
{
public:
    std::string object(const Value &schema)
    {
        std::string rule = literal("{") + " ws";
        const Value *const properties = member(schema, "properties");
        if (properties == nullptr || !properties->IsObject())
            return rule + ' ' + literal("}");
        std::string_view separator;
        for (const auto &property : properties->GetObject()) {
            rule += separator;
            rule += ' ' + stringLiteral(view(property.name)) + " ws \":\" ws " + value(property.value) + " ws";
            separator = " \",\" ws";
        }
        return rule + ' ' + literal("}");
    }

    /// What follows {"tool": in a call of one of these.
    std::string call(const std::vector<wire::Tool> &tools)
    {
        std::string rule;
        for (const wire::Tool &tool : tools) {
            rule += rule.empty() ? "" : " | ";
            rule += stringLiteral(tool.name) + " ws \",\" ws \"\\\"arguments\\\"\" ws \":\" ws " +
                    add(object(parsed(tool.schema))) + " ws \"}\"";
        }
        return "ws (" + rule + ")";
    }

    /// Adds a rule; its name.
    std::string add(const std::string &rule)
    {
        std::string name = "rule-" + std::to_string(m_count++);
        m_rules += name + " ::= " + rule + '\n';
        return name;
    }

    std::string grammar(const std::string &root) const
    {
        return "root ::= " + root + '\n' + m_rules + std::string(commonRules);
    }

    static rapidjson::Document parsed(std::string_view schema)
    {
        auto document = wire::parseObject(schema);
        if (!document)
            throw internalFailure("a schema is not a JSON object");
        return std::move(*document);
    }

private:
    std::string value(const Value &schema)
    {
        if (!schema.IsObject())
            throw internalFailure("a schema is not a JSON object");
        if (const Value *const choices = member(schema, "enum"))
            return add(enumeration(*choices));
        const Value *const type = member(schema, "type");
        const std::string_view name = type != nullptr && type->IsString() ? view(*type) : std::string_view();
        if (name == "object")
            return add(object(schema));
        if (name == "array")
            return add(array(schema));
        for (const std::string_view plain : plainTypes)
            if (name == plain)
                return std::string(plain);
        throw internalFailure("a schema has a type that is not understood");
    }

    std::string array(const Value &schema)
    {
        const Value *const items = member(schema, "items");
        if (items == nullptr)
            throw internalFailure("a schema's array does not say what it holds");
        const std::string item = value(*items);
        return "\"[\" ws (" + item + " ws (\",\" ws " + item + " ws)*)? \"]\"";
    }

    static std::string enumeration(const Value &choices)
    {
        std::string rule;
        if (!choices.IsArray() || choices.Empty())
            throw internalFailure("a schema's enumeration is empty");
        for (const Value &choice : choices.GetArray()) {
            if (!choice.IsString())
                throw internalFailure("a schema's enumeration holds something that is not text");
            rule += rule.empty() ? "" : " | ";
            rule += stringLiteral(view(choice));
        }
        return rule;
    }

    std::string m_rules;
    int m_count = 0;
};

} // namespace

std::string objectGrammar(std::string_view schema)
{
    Rules rules;
    const std::string root = rules.object(Rules::parsed(schema));
    return rules.grammar(root);
}

std::string objectOrCallGrammar(std::string_view schema, const std::vector<wire::Tool> &tools)
{
    Rules rules;
    const std::string answer = rules.add(rules.object(Rules::parsed(schema)));
    const std::string call = rules.add("\"{\" ws \"\\\"tool\\\"\" ws \":\" " + rules.call(tools));
    return rules.grammar(answer + " | " + call);
}

std::string callGrammar(const std::vector<wire::Tool> &tools)
{
    Rules rules;
    const std::string root = rules.call(tools);
    return rules.grammar(root);
}

} // namespace lumora::service
