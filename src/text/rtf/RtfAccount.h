// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

namespace orvane {

/// What of an RTF document stands elsewhere than in its text, for those who tell a person.
struct RtfAccount {
    int footnotes = 0; ///< came in as numbered paragraphs at the end
    int comments = 0;  ///< came in as marked paragraphs
    int textBoxes = 0; ///< came in as marked paragraphs
    int pictures = 0;  ///< stayed behind, with words in their place that say so
    int headers = 0;   ///< stayed behind: headers and footers of pages

    bool operator==(const RtfAccount&) const = default;
};

} // namespace orvane
