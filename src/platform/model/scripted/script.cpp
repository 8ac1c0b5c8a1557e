// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/model/scripted/script.h"

namespace lumora {

Script Script::text(const QString &whole)
{
    return pieces({whole});
}

Script Script::words(const QString &whole, std::chrono::milliseconds pieceDelay)
{
    Script script;
    script.pieceDelay = pieceDelay;
    qsizetype start = 0;
    while (start < whole.size()) {
        const qsizetype space = whole.indexOf(QLatin1Char(' '), start + 1);
        const qsizetype end = space < 0 ? whole.size() : space;
        script.steps.append(Text{whole.sliced(start, end - start)});
        start = end;
    }
    return script;
}

Script Script::pieces(const QStringList &texts)
{
    Script script;
    for (const QString &text : texts)
        script.steps.append(Text{text});
    return script;
}

Script Script::answer(const QByteArray &json)
{
    return {{Answer{json}}, {}, {}};
}

Script Script::failure(const QString &description)
{
    return {{Failure{description}}, {}, {}};
}

Script Script::hold()
{
    return {{Hold{}}, {}, {}};
}

Script Script::then(const Script &next) const
{
    Script joined = *this;
    joined.steps += next.steps;
    return joined;
}

} // namespace lumora
