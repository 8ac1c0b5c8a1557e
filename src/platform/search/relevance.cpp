// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/search/relevance.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <span>
#include <sqlite3.h>
#include <vector>

namespace lumora {

namespace {

// The parameters of BM25. How soon more of the same word counts no more:
constexpr double saturation = 1.2;
// How much its length is held against a document. Less than usual: an item is a whole document, and a long one says
// more things rather than the same thing in more words.
constexpr double lengthWeight = 0.3;

struct ApiError
{
    int code;
};

void check(int code)
{
    if (code != SQLITE_OK)
        throw ApiError{code};
}

/// What holds for all documents of one query.
struct Collection
{
    /// parameters: those of the function.
    Collection(const Fts5ExtensionApi &api, Fts5Context *context, std::span<sqlite3_value *> parameters)
        : passedOver(sqlite3_value_int(parameters[0]))
    {
        sqlite3_int64 documents = 0;
        sqlite3_int64 words = 0;
        check(api.xRowCount(context, &documents));
        check(api.xColumnTotalSize(context, -1, &words));
        averageSize = std::max(1.0, double(words) / double(std::max<sqlite3_int64>(1, documents)));
        const auto columns = size_t(api.xColumnCount(context));
        const auto phrases = size_t(api.xPhraseCount(context) - passedOver);
        if (parameters.size() != 1 + columns + phrases)
            throw ApiError{SQLITE_MISUSE};
        for (sqlite3_value *weight : parameters.subspan(1, columns))
            columnWeights.push_back(sqlite3_value_double(weight));
        for (sqlite3_value *count : parameters.last(phrases)) {
            const double holding = sqlite3_value_double(count);
            phraseWeights.push_back(std::log(1 + (std::max(0.0, double(documents) - holding) + 0.5) / (holding + 0.5)));
        }
        frequencies.resize(phrases);
    }

    int passedOver;
    double averageSize = 1; ///< words of a document
    std::vector<double> columnWeights;
    std::vector<double> phraseWeights; ///< the rarer, the higher
    std::vector<double> frequencies;   ///< of the phrases, in the document at hand
};

Collection &collectionOf(const Fts5ExtensionApi &api, Fts5Context *context, std::span<sqlite3_value *> parameters)
{
    if (void *known = api.xGetAuxdata(context, 0))
        return *static_cast<Collection *>(known);
    auto collection = std::make_unique<Collection>(api, context, parameters);
    Collection &result = *collection;
    check(api.xSetAuxdata(context, collection.release(),
                          [](void *old) { const std::unique_ptr<Collection> gone(static_cast<Collection *>(old)); }));
    return result;
}

void countFrequencies(const Fts5ExtensionApi &api, Fts5Context *context, Collection &collection)
{
    std::fill(collection.frequencies.begin(), collection.frequencies.end(), 0.0);
    int hits = 0;
    check(api.xInstCount(context, &hits));
    for (int hit = 0; hit < hits; ++hit) {
        int phrase = 0;
        int column = 0;
        int offset = 0;
        check(api.xInst(context, hit, &phrase, &column, &offset));
        if (phrase >= collection.passedOver)
            collection.frequencies[size_t(phrase - collection.passedOver)] += collection.columnWeights[size_t(column)];
    }
}

double scoreOf(const Fts5ExtensionApi &api, Fts5Context *context, const Collection &collection)
{
    int size = 0;
    check(api.xColumnSize(context, -1, &size));
    const double length = 1 - lengthWeight + lengthWeight * size / collection.averageSize;
    double score = 0;
    double held = 0;
    for (size_t i = 0; i < collection.frequencies.size(); ++i) {
        const double frequency = collection.frequencies[i];
        score += collection.phraseWeights[i] * frequency * (saturation + 1) / (frequency + saturation * length);
        held += frequency > 0 ? 1 : 0;
    }
    return score * held / double(std::max<size_t>(1, collection.frequencies.size()));
}

void relevance(const Fts5ExtensionApi *api, Fts5Context *context, sqlite3_context *result, int count,
               sqlite3_value **parameters)
{
    try { // nothing may be thrown through SQLite
        Collection &collection = collectionOf(*api, context, {parameters, size_t(count)});
        countFrequencies(*api, context, collection);
        sqlite3_result_double(result, -scoreOf(*api, context, collection));
    } catch (const ApiError &error) {
        sqlite3_result_error_code(result, error.code);
    } catch (const std::exception &) {
        sqlite3_result_error_nomem(result);
    }
}

} // namespace

int addRelevance(fts5_api &functions)
{
    return functions.xCreateFunction(&functions, "relevance", nullptr, relevance, nullptr);
}

} // namespace lumora
