// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/LayoutParts.h"

#include <algorithm>

namespace orvane {

namespace {

constexpr qint64 numberStep = 1 << 20;

struct Kept {
    size_t leading = 0;
    qsizetype leadingIds = 0;
    size_t trailing = 0;
    qsizetype trailingIds = 0;
};

Kept keptParts(const QList<QUuid>& stored, const std::vector<LayoutPart>& parts,
               const QList<QUuid>& wanted)
{
    const qsizetype shorter = std::min(stored.size(), wanted.size());
    const auto firstChange =
        std::mismatch(stored.cbegin(), stored.cbegin() + shorter, wanted.cbegin()).first;
    const qsizetype before = firstChange - stored.cbegin();
    const auto lastChange =
        std::mismatch(stored.crbegin(), stored.crbegin() + (shorter - before), wanted.crbegin())
            .first;
    const qsizetype after = lastChange - stored.crbegin();
    Kept kept;
    while (kept.leading < parts.size() && kept.leadingIds + parts[kept.leading].count <= before)
        kept.leadingIds += parts[kept.leading++].count;
    while (kept.leading + kept.trailing < parts.size()) {
        const qsizetype count = parts[parts.size() - 1 - kept.trailing].count;
        if (kept.trailingIds + count > after)
            break;
        kept.trailingIds += count;
        ++kept.trailing;
    }
    return kept;
}

// A neighbour with room takes up what lies between, so that appending one id at a time doesn't
// leave one part for each.
void giveUpNeighbour(Kept& kept, const std::vector<LayoutPart>& parts, qsizetype between)
{
    if (kept.leading > 0 && parts[kept.leading - 1].count + between <= idsPerLayoutPart) {
        kept.leadingIds -= parts[--kept.leading].count;
    } else if (kept.trailing > 0) {
        const qsizetype count = parts[parts.size() - kept.trailing].count;
        if (count + between <= idsPerLayoutPart) {
            --kept.trailing;
            kept.trailingIds -= count;
        }
    }
}

// Between which numbers `pieces` new ones are to lie.
struct Gap {
    qint64 low = 0;
    qint64 high = 0;
};

Gap gapBetween(const Kept& kept, const std::vector<LayoutPart>& parts, qint64 pieces)
{
    const qint64 room = (pieces + 1) * numberStep;
    if (kept.trailing == 0) {
        const qint64 low = kept.leading > 0 ? parts[kept.leading - 1].number : 0;
        return {low, low + room};
    }
    const qint64 high = parts[parts.size() - kept.trailing].number;
    return {kept.leading > 0 ? parts[kept.leading - 1].number : high - room, high};
}

} // namespace

LayoutPartsPlan planLayoutParts(const QList<QUuid>& stored, const std::vector<LayoutPart>& parts,
                                const QList<QUuid>& wanted)
{
    Kept kept = keptParts(stored, parts, wanted);
    if (wanted.size() > kept.leadingIds + kept.trailingIds)
        giveUpNeighbour(kept, parts, wanted.size() - kept.leadingIds - kept.trailingIds);
    qsizetype between = wanted.size() - kept.leadingIds - kept.trailingIds;
    const auto piecesFor = [](qsizetype ids) {
        return qint64(ids + idsPerLayoutPart - 1) / idsPerLayoutPart;
    };
    qint64 pieces = piecesFor(between);
    Gap gap = gapBetween(kept, parts, pieces);
    if (gap.high - gap.low <= pieces) { // no numbers are left: all parts are written anew
        kept = {};
        between = wanted.size();
        pieces = piecesFor(between);
        gap = gapBetween(kept, parts, pieces);
    }
    if (kept.leading + kept.trailing == 0 && pieces == 0) {
        pieces = 1;
        gap = gapBetween(kept, parts, pieces);
    }

    LayoutPartsPlan plan;
    const auto firstBetween = parts.cbegin() + std::ptrdiff_t(kept.leading);
    const auto endBetween = parts.cend() - std::ptrdiff_t(kept.trailing);
    plan.parts.assign(parts.cbegin(), firstBetween);
    auto reusable = firstBetween;
    for (qint64 i = 0; i < pieces; ++i) {
        const qsizetype from = between * i / pieces;
        const qsizetype to = between * (i + 1) / pieces;
        const qint64 row = reusable != endBetween ? (reusable++)->row : 0;
        plan.writes.push_back(
            {row, plan.parts.size(), wanted.mid(kept.leadingIds + from, to - from)});
        plan.parts.push_back(
            {row, gap.low + (gap.high - gap.low) * (i + 1) / (pieces + 1), to - from});
    }
    for (; reusable != endBetween; ++reusable)
        plan.removedRows.push_back(reusable->row);
    plan.parts.insert(plan.parts.end(), endBetween, parts.cend());
    return plan;
}

} // namespace orvane
