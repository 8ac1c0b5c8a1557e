// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/search/stopwords.h"

#include "platform/search/wordfolding.h"

#include <array>
#include <string>
#include <unordered_set>

namespace lumora {

namespace {

/// Words that are content in one language and nothing in another ("die", "war", "pour", "van") are left out.
constexpr std::array stopWords = {
    // English, with what an apostrophe leaves of its contractions
    "a about after again all also am an and any are aren as at be because been before being between both but by can "
    "could "
    "couldn did didn do does doesn doing don down during each few for from further had hadn has hasn have haven having "
    "he "
    "her here hers him his how i if in into is isn it its just ll me more most my no nor not of off on once only or "
    "other "
    "our ours out over own please re s said same say says she should shouldn so some such t tell than that the their "
    "theirs "
    "them then there these they this those through to too under until up us ve very was wasn we were weren what when "
    "where "
    "which while who whom why will with would wouldn you your yours",
    // German
    "aber als auch auf aus bei das dass dem der des dich dir doch du durch ein eine einem einen einer eines er es euch "
    "euer "
    "gibt haben hatte hier ich ihm ihn ihr ihre im ist kann kein keine können mein meine mich mir mit muss nach nicht "
    "noch "
    "nur oder schon sehr sein seine sich sie sind soll über um und uns unser unter von vor wann warum welche welcher "
    "welches "
    "wenn wer werden wie wir wird wo wurde wurden zu zum zur dieser diese dieses",
    // French
    "au aux avec ce ces cet cette dans de des du elle elles en est et été être il ils j je l la le les leur leurs lui "
    "ma mes "
    "ne nous ou où par pas qu quand que quel quelle quelles quels qui quoi sa sans ses sont sur ta tes tu un une vos "
    "votre "
    "vous y",
    // Spanish, Portuguese
    "al como con cual cuáles cuando del donde el él ella ellos en es esta este esto estos estas está ha hay la las lo "
    "los "
    "mais más mi mis muy não na nas nos o os para pela pelo pero por qual quais que qué quem quien se seu si sobre su "
    "sua "
    "sus são também um uma un una unos unas ya ao aos com da das dos e em foi",
    // Italian, Dutch
    "alla che chi con cosa da dei del della delle di dove e gli ho i il lo nel nella non per più quale quali questa "
    "queste "
    "questi questo sono suo tra un uno aan bij dat deze dit een en het hij hoe ik je met naar niet ook op te uit voor "
    "waar "
    "wat wie wij wordt worden zij zijn",
    // Russian
    "а без был были было бы в во вот для до его ее если же за и из или их к как какая какие какой когда кто ли мне мы "
    "на не "
    "но о об он она они от по при с со так такой то у что чтобы эта эти это я",
    // Arabic, Hebrew
    "في من على إلى عن ما ماذا هل هو هي هذا هذه التي الذي أن إن و أو كيف متى أين كم لماذا مع "
    "של את על עם מה האם הוא היא זה זו זאת כי או גם איך מתי איפה אני יש לא כל",
    // Chinese
    "的 了 是 在 我 我们 我們 你 您 他 她 它 们 們 这 這 那 这个 這個 那个 什么 什麼 怎么 怎麼 怎样 如何 哪 哪里 哪个 "
    "谁 几 多少 "
    "吗 嗎 呢 吧 啊 和 与 與 或 及 就 也 都 很 对 對 对于 关于 關於 有 没有 沒有 个 個 份 请 請 请问 請問 为什么 "
    "為什麼 被 把 从 到 "
    "要 会 會 能 可以 什么时候",
    // Japanese
    "の に は を が と で も か へ や から まで より です ます でした ました だ である する した して し て い る いる "
    "ある あり ありま "
    "こと もの これ それ あれ この その あの ここ そこ 何 何と どう どこ いつ 誰 なぜ いくら について に関する よう な "
    "ね よ ください "
    "すか って いい さ れ",
    // Thai, Korean
    "ที่ และ หรือ ใน ของ เป็น มี ให้ ได้ จะ ว่า กับ อะไร อย่างไร ไหม นี้ นั้น คือ เท่า เท่าไหร่ ไหร่ เกี่ยว "
    "이 그 저 것 수 및 또는 무엇 뭐라고 어떻게 언제 어디 대해 있나요 되어",
};

std::unordered_set<std::string> makeStopWords()
{
    std::unordered_set<std::string> folded;
    for (const std::string_view line : stopWords) {
        for (size_t start = 0; start < line.size();) {
            const size_t end = std::min(line.find(' ', start), line.size());
            icu::UnicodeString word = icu::UnicodeString::fromUTF8(line.substr(start, end - start));
            foldWord(word);
            std::string utf8;
            folded.insert(word.toUTF8String(utf8));
            start = end + 1;
        }
    }
    return folded;
}

} // namespace

bool isStopWord(std::string_view word)
{
    static const std::unordered_set<std::string> words = makeStopWords();
    return words.contains(std::string(word));
}

} // namespace lumora
