// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/rtf/RtfInterpreter.h"

#include <QByteArrayView>

#include <string_view>
#include <unordered_map>

namespace orvane {

/// What a control word does: `argument` tells apart words that share a function.
struct RtfWord {
    void (*apply)(RtfInterpreter& interpreter, RtfParameter parameter, int argument) = nullptr;
    int argument = 0;
    bool insertsCharacter = false; ///< counts as one character among the fallbacks of `\uN`
};

/// The colour table's index that fills and highlights name; number 0 is none, whatever the table
/// has there.
[[nodiscard]] constexpr int fillColorIndex(int number)
{
    return number > 0 ? number : noColorIndex;
}

using RtfWordTable = std::unordered_map<std::string_view, RtfWord>;

void addCharacterWords(RtfWordTable& table);
void addParagraphWords(RtfWordTable& table);
void addTableWords(RtfWordTable& table);
/// Numbering: the list tables, and what paragraphs define themselves.
void addNumberingWords(RtfWordTable& table);
/// The header, and the words that begin a destination or hold a special character.
void addDocumentWords(RtfWordTable& table);

/// The word of this name, or null.
[[nodiscard]] const RtfWord* findRtfWord(QByteArrayView name);

} // namespace orvane
