// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/session/OpenTexts.h"

#include <algorithm>

namespace orvane {

void OpenTexts::keep(std::unique_ptr<OpenText> text)
{
    m_texts.push_back(std::move(text));
    qsizetype characters = 0;
    std::size_t kept = 0;
    while (kept < m_texts.size() && kept < mostTexts) {
        characters += m_texts[m_texts.size() - 1 - kept]->store.length();
        if (characters > mostCharacters)
            break;
        ++kept;
    }
    m_texts.erase(m_texts.begin(), m_texts.end() - std::ptrdiff_t(kept));
}

std::unique_ptr<OpenText> OpenTexts::take(const QUuid& noteID, TextForm form,
                                          const StoredText& stored)
{
    const auto found = std::find_if(m_texts.begin(), m_texts.end(), [&](const auto& text) {
        return text->noteID == noteID && text->form == form;
    });
    if (found == m_texts.end())
        return nullptr;
    std::unique_ptr<OpenText> text = std::move(*found);
    m_texts.erase(found);
    return text->stored.isSame(stored, form) ? std::move(text) : nullptr;
}

} // namespace orvane
