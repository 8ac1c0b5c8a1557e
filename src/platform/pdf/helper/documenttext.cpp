// SPDX-FileCopyrightText: 2026 The Lumora developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "documenttext.h"

#include <limits>
#include <memory>
#include <poppler-document.h>
#include <poppler-global.h>
#include <poppler-page.h>

namespace lumora::pdf {

namespace {

std::string pageText(const poppler::page &page)
{
    const poppler::byte_array bytes = page.text(poppler::rectf(), poppler::page::non_raw_non_physical_layout).to_utf8();
    std::string text(bytes.begin(), bytes.end());
    std::erase(text, '\0');                           // a font may map its characters to it
    text.erase(text.find_last_not_of(" \n\r\f") + 1); // a page ends with line breaks and a form feed
    return text;
}

} // namespace

void readText(std::string_view file, const std::function<void(const std::string &)> &take)
{
    if (file.size() > std::numeric_limits<int>::max())
        return;
    poppler::set_debug_error_function([](const std::string &, void *) {}, nullptr);
    const std::unique_ptr<poppler::document> document(
        poppler::document::load_from_raw_data(file.data(), static_cast<int>(file.size())));
    if (!document || document->is_locked())
        return;
    bool isFirst = true;
    const int pages = document->pages();
    for (int number = 0; number < pages; ++number) {
        const std::unique_ptr<poppler::page> page(document->create_page(number));
        const std::string text = page ? pageText(*page) : std::string();
        if (!text.empty())
            take(isFirst ? text : "\n\n" + text);
        isFirst = isFirst && text.empty();
    }
}

} // namespace lumora::pdf
