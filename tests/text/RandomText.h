// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/AttributedString.h"

#include <random>

namespace orvane {

/// Random documents from a seed: text of several scripts, tables, attachments, every attribute.
class RandomText {
public:
    /// What `rtf` leaves out is what that form can't express exactly.
    enum class Attributes { all, rtf };

    explicit RandomText(unsigned seed, Attributes attributes = Attributes::all);

    [[nodiscard]] AttributedString document();
    [[nodiscard]] CharacterStyle characterStyle();
    [[nodiscard]] ParagraphStyle paragraphStyle();

    [[nodiscard]] int upTo(int limit);
    [[nodiscard]] bool oneIn(int count) { return upTo(count - 1) == 0; }

private:
    double length();
    RgbaColor color();
    QUuid id();
    QString words();
    TextAttachment attachment();
    void appendTable(AttributedString& text);
    void appendParagraph(AttributedString& text, const SharedParagraphStyle& style);

    std::mt19937 m_engine;
    bool m_all;
};

} // namespace orvane
