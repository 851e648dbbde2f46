// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/value/StyleInterner.h"

namespace orvane {
namespace {

// The shared box, its allocation's header and its entry in the table.
constexpr qsizetype overhead = 80;

} // namespace

qsizetype memoryCost(const CharacterStyle& style)
{
    return qsizetype(sizeof(CharacterStyle)) + overhead + 2 * style.link.size();
}

qsizetype memoryCost(const ParagraphStyle& style)
{
    return qsizetype(sizeof(ParagraphStyle)) + overhead +
           style.tabStops.capacity() * qsizetype(sizeof(TextTab)) +
           style.textLists.capacity() * qsizetype(sizeof(TextList));
}

qsizetype memoryCost(const CellLook&)
{
    return qsizetype(sizeof(CellLook)) + overhead;
}

} // namespace orvane
