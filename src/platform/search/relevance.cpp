// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/search/relevance.h"

#include <algorithm>
#include <cmath>
#include <memory>
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

int countDocument(const Fts5ExtensionApi * /*api*/, Fts5Context * /*context*/, void *count)
{
    ++*static_cast<sqlite3_int64 *>(count);
    return SQLITE_OK;
}

/// What holds for all documents of one query.
struct Collection
{
    Collection(const Fts5ExtensionApi &api, Fts5Context *context, int firstPhrase)
        : firstScored(firstPhrase)
    {
        sqlite3_int64 documents = 0;
        sqlite3_int64 words = 0;
        check(api.xRowCount(context, &documents));
        check(api.xColumnTotalSize(context, -1, &words));
        averageSize = std::max(1.0, double(words) / double(std::max<sqlite3_int64>(1, documents)));
        for (int phrase = firstScored; phrase < api.xPhraseCount(context); ++phrase) {
            sqlite3_int64 holding = 0;
            check(api.xQueryPhrase(context, phrase, &holding, countDocument));
            const double without = std::max(0.0, double(documents - holding));
            weights.push_back(std::log(1 + (without + 0.5) / (double(holding) + 0.5)));
        }
        frequencies.resize(weights.size());
    }

    int firstScored;
    double averageSize = 1;          ///< words of a document
    std::vector<double> weights;     ///< of the scored phrases: the rarer, the higher
    std::vector<double> frequencies; ///< of the same, in the document at hand
};

Collection &collectionOf(const Fts5ExtensionApi &api, Fts5Context *context, int firstScored)
{
    if (void *known = api.xGetAuxdata(context, 0))
        return *static_cast<Collection *>(known);
    auto collection = std::make_unique<Collection>(api, context, firstScored);
    Collection &result = *collection;
    check(api.xSetAuxdata(context, collection.release(),
                          [](void *old) { const std::unique_ptr<Collection> gone(static_cast<Collection *>(old)); }));
    return result;
}

void countFrequencies(const Fts5ExtensionApi &api, Fts5Context *context, Collection &collection,
                      sqlite3_value **weights)
{
    std::fill(collection.frequencies.begin(), collection.frequencies.end(), 0.0);
    int hits = 0;
    check(api.xInstCount(context, &hits));
    for (int hit = 0; hit < hits; ++hit) {
        int phrase = 0;
        int column = 0;
        int offset = 0;
        check(api.xInst(context, hit, &phrase, &column, &offset));
        if (phrase >= collection.firstScored)
            collection.frequencies[size_t(phrase - collection.firstScored)] += sqlite3_value_double(weights[column]);
    }
}

double scoreOf(const Fts5ExtensionApi &api, Fts5Context *context, const Collection &collection)
{
    int size = 0;
    check(api.xColumnSize(context, -1, &size));
    const double length = 1 - lengthWeight + lengthWeight * size / collection.averageSize;
    double score = 0;
    double held = 0;
    for (size_t i = 0; i < collection.weights.size(); ++i) {
        const double frequency = collection.frequencies[i];
        score += collection.weights[i] * frequency * (saturation + 1) / (frequency + saturation * length);
        held += frequency > 0 ? 1 : 0;
    }
    return score * held / double(std::max<size_t>(1, collection.weights.size()));
}

void relevance(const Fts5ExtensionApi *api, Fts5Context *context, sqlite3_context *result, int count,
               sqlite3_value **parameters)
{
    if (count <= api->xColumnCount(context)) {
        sqlite3_result_error_code(result, SQLITE_MISUSE);
        return;
    }
    try { // nothing may be thrown through SQLite
        Collection &collection = collectionOf(*api, context, sqlite3_value_int(parameters[0]));
        countFrequencies(*api, context, collection, parameters + 1);
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
