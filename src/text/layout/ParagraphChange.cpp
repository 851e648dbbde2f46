// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/layout/ParagraphChange.h"

#include <algorithm>

namespace orvane {

LineStretch changedLines(const ParagraphChange& change, const std::vector<BrokenLine>& lines)
{
    const std::vector<BrokenLine>& before = change.linesBefore;
    const auto isSame = [&](std::size_t i) {
        const BrokenLine& line = lines[i];
        const BrokenLine& old = before[i];
        if (line.top != old.top || line.height != old.height || line.length != old.length)
            return false;
        if (line.start + line.length < change.from)
            return line.start == old.start;
        return line.start > change.from + change.added &&
               line.start == old.start + change.added - change.removed;
    };
    LineStretch changed{0, lines.size()};
    const std::size_t shared = std::min(before.size(), lines.size());
    while (changed.first < shared && isSame(changed.first))
        ++changed.first;
    const bool sameCount = before.size() == lines.size();
    while (sameCount && changed.past > changed.first && isSame(changed.past - 1))
        --changed.past;
    return changed;
}

} // namespace orvane
