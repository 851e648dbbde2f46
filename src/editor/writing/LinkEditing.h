// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/TextSelection.h"

#include <QString>

namespace orvane {

class EditGateway;
class TextStore;

/// Where a link is, or may be made.
struct LinkPlace {
    TextRange range; ///< empty where text is to be put in
    QString text;    ///< of the range
    QString address; ///< empty where there is no link yet

    bool operator==(const LinkPlace&) const = default;

    [[nodiscard]] bool isLink() const { return !address.isEmpty(); }
    /// Whether the text can be typed anew: one line without objects.
    [[nodiscard]] bool isOneLine() const;
};

/// The selection without blanks at its ends, with the first link in it; at a caret the whole link
/// that it is in or at.
[[nodiscard]] LinkPlace linkPlaceAt(const TextStore& store, TextSelection selection);

/// Makes the place lead to `address`, with `text` in place of its own where that differs, or the
/// address for a blank one. One step to undo. False, and nothing done, where the gateway refuses it
/// or the place is gone.
bool setLink(EditGateway& gateway, const LinkPlace& place, const QString& text,
             const QString& address);
/// Leaves the text and takes the link.
bool removeLink(EditGateway& gateway, const LinkPlace& place);

} // namespace orvane
