// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/AttributedString.h"

#include <QUuid>

#include <optional>

/// Places within a note that links lead to. A place has a name (`CharacterStyle::targetName`); the
/// note's own links name it as "#name", those of other notes as "orvaneworkspace://note/ID#name".
namespace orvane {

/// The name of the place that `link` leads to, in whichever note; empty for any other link.
[[nodiscard]] QString linkedTargetName(const QString& link);

/// The address of a place in a note, for links in other notes.
[[nodiscard]] QString noteTargetLink(const QUuid& noteID, const QString& name);

/// The characters that have the name, the first if there are several; nothing if none has.
[[nodiscard]] std::optional<TextRange> findLinkTarget(const AttributedString& text,
                                                      const QString& name);

/// Takes names away to which no link of the text leads.
void dropUnlinkedTargets(AttributedString& text);

/// A footnote is a link whose place is named, to a paragraph that begins with the note's number,
/// named and linked back to that place.
struct Footnote {
    TextRange reference; ///< the number in the text
    TextRange paragraph; ///< the note, without its "\n"
    TextRange content;   ///< of it, what stands behind the number and a blank
};

/// The footnotes of a text in the order of their references.
[[nodiscard]] QList<Footnote> footnotes(const AttributedString& text);

} // namespace orvane
