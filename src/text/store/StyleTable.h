// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/CharacterStyle.h"
#include "text/value/ParagraphStyle.h"

#include <QHash>
#include <QTextBlockFormat>
#include <QTextCharFormat>

#include <vector>

namespace orvane {

/// Sets `font` as the layout wants it: with its size in layout units.
void setFont(QTextCharFormat& format, const TextFont& font);
/// The size alone, in points.
void setFontSize(QTextCharFormat& format, double points);

/// Turns the styles of attributed text into the formats of the document that stores them, and back
/// without loss: a format carries the number of its style, beside what the layout needs to know.
class StyleTable {
public:
    StyleTable();

    [[nodiscard]] QTextCharFormat formatFor(const SharedCharacterStyle& style);
    [[nodiscard]] QTextBlockFormat formatFor(const SharedParagraphStyle& style);

    /// The style that a format was made for; the empty style for any other format.
    [[nodiscard]] const SharedCharacterStyle& styleOf(const QTextCharFormat& format) const;
    [[nodiscard]] const SharedParagraphStyle& styleOf(const QTextBlockFormat& format) const;

    /// Forgets all styles; for a document that has been cleared.
    void clear();

private:
    template <typename Style>
    struct Numbered {
        std::vector<Style> styles;
        QHash<Style, int> numbers;

        int numberOf(const Style& style);
    };

    Numbered<SharedCharacterStyle> m_characters;
    Numbered<SharedParagraphStyle> m_paragraphs;
};

} // namespace orvane
