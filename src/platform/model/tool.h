// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "platform/model/generable.h"

#include <QList>
#include <QString>

#include <concepts>
#include <memory>
#include <stop_token>

namespace lumora {

/// A record that fulfils the tool contract: a name, a description, generable arguments, and a call that runs on a
/// worker thread, reads nothing but its own fields and services that are safe there, and throws ModelError where it
/// fails. Once stop is requested nobody wants its output any more, and it is to end soon, in whatever way.
template <typename T>
concept ToolRecord =
    std::copyable<T> && Generable<typename T::Arguments> && requires(const T &tool, const std::stop_token &stop) {
        {
            tool.name
        } -> std::convertible_to<QString>;
        {
            tool.description
        } -> std::convertible_to<QString>;
        {
            tool.call(typename T::Arguments{}, stop)
        } -> std::convertible_to<QString>;
    };

/// Any tool, as a session holds it. Immutable; shared between threads.
class Tool
{
public:
    virtual ~Tool() = default;

    virtual QString name() const = 0;
    virtual QString description() const = 0;
    virtual GenerationSchema parameters() const = 0;

    /// Whether name, description and parameters are written into the session's instructions.
    virtual bool includesSchemaInInstructions() const { return true; }

    /// Runs on a worker thread, and ends soon once stop is requested. Throws ConversionError where the arguments do not
    /// fit, ModelError where the call fails.
    virtual QString call(const GeneratedContent &arguments, const std::stop_token &stop) const = 0;
};

using ToolList = QList<std::shared_ptr<const Tool>>;

/// Wraps a tool record.
template <ToolRecord T>
class RecordTool final : public Tool
{
public:
    explicit RecordTool(T record)
        : m_record(std::move(record))
    {
    }

    QString name() const override { return m_record.name; }
    QString description() const override { return m_record.description; }
    GenerationSchema parameters() const override { return T::Arguments::generationSchema(); }
    QString call(const GeneratedContent &arguments, const std::stop_token &stop) const override
    {
        return m_record.call(T::Arguments::fromGeneratedContent(arguments), stop);
    }

private:
    T m_record;
};

template <ToolRecord T>
std::shared_ptr<const Tool> makeTool(T record)
{
    return std::make_shared<RecordTool<T>>(std::move(record));
}

} // namespace lumora
