// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/store/DocumentPieces.h"
#include "text/value/AttributedString.h"

#include <QString>

#include <vector>

namespace orvane {

/// The whole content of a `TextStore` as it stood at one moment: immutable, cheap to copy, to be
/// read on any thread. Taking one moves no text about; turning it into attributed text does, and is
/// meant for a worker.
class TextSnapshot {
public:
    [[nodiscard]] AttributedString toAttributedString() const;

private:
    friend class TextStore;

    QString m_buffer; ///< the store's text in the order of its insertion
    std::vector<DocumentPieces::Contents::Piece> m_pieces;
    std::vector<DocumentPieces::Contents::Paragraph> m_paragraphs;
    std::vector<SharedCharacterStyle> m_characterStyles;
    std::vector<SharedParagraphStyle> m_paragraphStyles;
};

} // namespace orvane
