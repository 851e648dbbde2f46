// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/AttributedString.h"

namespace orvane {

/// What a document of another program has beside its text, for those who tell a person: a part of
/// it comes in at another place, a part stays behind. Whoever opens, imports or pastes a document
/// says so where `isEmpty` is false.
struct ImportAccount {
    // Came in.
    int footnotes = 0; ///< as numbered paragraphs at the end of the text, linked both ways
    int comments = 0;  ///< as marked paragraphs behind theirs
    int textBoxes = 0; ///< as marked paragraphs behind theirs
    // Stayed behind.
    int pictures = 0; ///< with words in their place, where the document or the reader has some
    int headers = 0;  ///< headers and footers of pages
    int media = 0;    ///< videos, sounds, drawings, and pages within a page

    [[nodiscard]] int cameIn() const { return footnotes + comments + textBoxes; }
    [[nodiscard]] int stayedBehind() const { return pictures + headers + media; }
    [[nodiscard]] bool isEmpty() const { return cameIn() == 0 && stayedBehind() == 0; }

    bool operator==(const ImportAccount&) const = default;
};

/// A text that was read from another program's document.
struct ImportedText {
    AttributedString text;
    ImportAccount account;
};

} // namespace orvane
