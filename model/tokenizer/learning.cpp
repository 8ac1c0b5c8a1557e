// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tokenizer/learning.h"

#include "tokenizer/bytetext.h"
#include "tokenizer/pieces.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_set>
#include <utility>

namespace lumora::training {

namespace {

/// A distinct word in the parts that it is made of so far.
struct Word
{
    std::vector<std::string> parts;
    std::int64_t count = 0;
};

/// Counts neighbours and merges them, always the most frequent pair.
class Merger
{
public:
    explicit Merger(std::vector<Word> words)
        : m_words(std::move(words))
    {
        for (std::size_t i = 0; i < m_words.size(); ++i)
            count(i, m_words[i].count);
    }

    /// The most frequent pair, the greater text where several are. A count of zero: there is none.
    std::pair<Merge, std::int64_t> best() const
    {
        std::pair<Merge, std::int64_t> best;
        for (const auto &[pair, entry] : m_pairs)
            if (entry.count >= best.second)
                best = {pair, entry.count};
        return best;
    }

    void merge(const Merge &pair)
    {
        const std::unordered_set<std::size_t> words = m_pairs.at(pair).words;
        for (const std::size_t word : words) {
            count(word, -m_words[word].count);
            join(m_words[word].parts, pair);
            count(word, m_words[word].count);
        }
        m_pairs.erase(pair);
    }

private:
    struct Entry
    {
        std::int64_t count = 0;
        std::unordered_set<std::size_t> words; // in which it stands, or once stood
    };

    void count(std::size_t word, std::int64_t times)
    {
        const std::vector<std::string> &parts = m_words[word].parts;
        for (std::size_t i = 0; i + 1 < parts.size(); ++i) {
            Entry &entry = m_pairs[{parts[i], parts[i + 1]}];
            entry.count += times;
            entry.words.insert(word);
        }
    }

    static void join(std::vector<std::string> &parts, const Merge &pair)
    {
        std::vector<std::string> joined;
        for (std::size_t i = 0; i < parts.size(); ++i) {
            const bool isPair = i + 1 < parts.size() && parts[i] == pair.first && parts[i + 1] == pair.second;
            joined.push_back(isPair ? parts[i] + parts[i + 1] : parts[i]);
            i += isPair ? 1 : 0;
        }
        parts = std::move(joined);
    }

    std::vector<Word> m_words;
    std::map<Merge, Entry> m_pairs;
};

std::string_view withoutSpace(std::string_view piece)
{
    return piece.size() > 1 && piece.starts_with(' ') ? piece.substr(1) : piece;
}

std::vector<Word> wordsOf(const PieceCounts &pieces)
{
    std::map<std::string_view, std::int64_t> counts; // sorted, so that every run learns the same
    for (const auto &[piece, count] : pieces.counts())
        if (!isNumber(piece))
            counts[withoutSpace(piece)] += count;
    std::vector<Word> words;
    for (const auto &[text, count] : counts) {
        Word &word = words.emplace_back(Word{{}, count});
        for (const char byte : text)
            word.parts.push_back(printable(static_cast<unsigned char>(byte)));
    }
    return words;
}

/// The merges of a space with the most frequent words that are a token of their own.
std::vector<Merge> spaceMerges(const PieceCounts &pieces, const Tokenizer &tokenizer, std::size_t most)
{
    std::vector<std::pair<std::int64_t, std::string>> words;
    for (const auto &[piece, count] : pieces.counts()) {
        if (withoutSpace(piece).size() == piece.size() || isNumber(piece))
            continue;
        std::vector<std::string> parts = tokenizer.split(withoutSpace(piece));
        if (parts.size() == 1)
            words.emplace_back(-count, std::move(parts.front()));
    }
    std::ranges::sort(words);
    std::vector<Merge> merges;
    for (std::size_t i = 0; i < std::min(most, words.size()); ++i)
        merges.emplace_back(printable(' '), words[i].second);
    return merges;
}

} // namespace

void PieceCounts::add(std::string_view text)
{
    for (const std::string_view piece : pieces(text))
        ++m_counts[std::string(piece)];
}

std::vector<Merge> learnMerges(const PieceCounts &pieces, std::size_t vocabularySize, std::size_t wordsWithSpace)
{
    constexpr std::int64_t leastCount = 2;
    std::set<std::string> made;
    std::vector<Merge> merges;
    Merger merger(wordsOf(pieces));
    const std::size_t fixed = Tokenizer({}).size();
    while (fixed + made.size() + wordsWithSpace < vocabularySize) {
        const auto [pair, count] = merger.best();
        if (count < leastCount)
            break;
        merger.merge(pair);
        merges.push_back(pair);
        made.insert(pair.first + pair.second); // two merges can make the same token
    }
    const std::vector<Merge> last = spaceMerges(pieces, Tokenizer(merges), wordsWithSpace);
    merges.insert(merges.end(), last.begin(), last.end());
    return merges;
}

} // namespace lumora::training
