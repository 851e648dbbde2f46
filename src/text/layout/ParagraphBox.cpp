// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/layout/ParagraphBox.h"

#include <algorithm>

namespace orvane {

void ParagraphPiece::moveBy(int distance)
{
    start += distance;
    for (BrokenLine& line : lines)
        line.start += distance;
    if (layout)
        layout->moveBy(distance);
}

int ParagraphPiece::linesOutOfReach(int from) const
{
    // An input method's text takes part in the lines.
    if (!hasLines() || layout->preeditStart() >= 0)
        return 0;
    const auto behind = std::find_if(lines.begin(), lines.end(),
                                     [from](const BrokenLine& line) { return line.start >= from; });
    return std::max(0, int(behind - lines.begin()) - 2);
}

ParagraphPiece ParagraphPiece::splitBehind(int count)
{
    const BrokenLine& line = lines[std::size_t(count)];
    ParagraphPiece rest;
    rest.start = line.start;
    rest.length = end() - line.start;
    rest.height = height - line.top;
    rest.isFirm = true;
    length = line.start - start;
    height = line.top;
    lines.resize(std::size_t(count));
    for (int i = count; i < layout->lineCount(); ++i)
        layout->line(i).setPosition({0, outOfSight});
    return rest;
}

bool ParagraphBox::hasAllLines() const
{
    return !pieces.empty() && std::all_of(pieces.begin(), pieces.end(), [](const auto& piece) {
        return piece.hasLines() && piece.isFirm;
    });
}

bool ParagraphBox::isDecorated() const
{
    return std::any_of(pieces.begin(), pieces.end(), [](const ParagraphPiece& piece) {
        return piece.hasLines() && !piece.layout->decorations().isEmpty();
    });
}

std::vector<BrokenLine> ParagraphBox::knownLines() const
{
    std::vector<BrokenLine> lines;
    qreal top = 0;
    for (const ParagraphPiece& piece : pieces) {
        for (BrokenLine line : piece.lines) {
            line.top += top;
            lines.push_back(line);
        }
        top += piece.height;
    }
    return lines;
}

int ParagraphBox::pieceAt(int position) const
{
    const auto after =
        std::upper_bound(pieces.begin(), pieces.end(), position,
                         [](int at, const ParagraphPiece& piece) { return at < piece.start; });
    return std::max(0, int(after - pieces.begin()) - 1);
}

int ParagraphBox::pieceAtHeight(qreal y) const
{
    const int last = int(pieces.size()) - 1;
    for (int i = 0; i < last; ++i) {
        y -= pieces[std::size_t(i)].height;
        if (y < 0)
            return i;
    }
    return last;
}

qreal ParagraphBox::topOf(int piece) const
{
    qreal top = 0;
    for (int i = 0; i < piece; ++i)
        top += pieces[std::size_t(i)].height;
    return top;
}

void ParagraphBox::cut(int length, const Cutting& cutting)
{
    pieces.clear();
    hanging.reset();
    ParagraphPiece& all = pieces.emplace_back();
    all.length = length;
    all.height = length * cutting.unitsPerCharacter;
    all.isFirm = true;
    splitLong(0, cutting);
}

void ParagraphBox::splitLong(int index, const Cutting& cutting)
{
    ParagraphPiece& piece = pieces[std::size_t(index)];
    if (piece.hasLines() || piece.length <= 2 * cutting.length)
        return;
    const int end = piece.end();
    const qreal each = piece.height / piece.length;
    std::vector<ParagraphPiece> parts;
    for (int start = piece.start + cutting.length; start < end;) {
        ParagraphPiece& part = parts.emplace_back();
        part.start = start;
        part.length = end - start > 2 * cutting.length ? cutting.length : end - start;
        part.height = part.length * each;
        start = part.end();
    }
    piece.length = cutting.length;
    piece.height = piece.length * each;
    pieces.insert(pieces.begin() + index + 1, std::make_move_iterator(parts.begin()),
                  std::make_move_iterator(parts.end()));
    const auto behind = std::size_t(index) + parts.size() + 1;
    if (behind < pieces.size())
        pieces[behind].isFirm = false;
}

void ParagraphBox::replace(int from, int removed, int added, int lineLength, const Cutting& cutting)
{
    int first = pieceAt(from);
    int last = std::max(first, pieceAt(from + std::max(0, removed - 1)));
    ParagraphPiece& touched = pieces[std::size_t(first)];
    const int kept = isWhole() ? 0 : touched.linesOutOfReach(from);
    if (kept > 0) {
        ParagraphPiece rest = touched.splitBehind(kept);
        ++first;
        ++last;
        pieces.insert(pieces.begin() + first, std::move(rest));
    }
    const auto at = pieces.begin() + first;
    ParagraphPiece& changed = *at;
    // The line before may have room for a word that has become shorter.
    const int firstLine = changed.hasLines() ? changed.lines.front().length : lineLength;
    if (kept == 0 && first > 0 && from <= changed.start + firstLine) {
        (at - 1)->release();
        changed.isFirm = false;
    }
    const int growth = added - removed;
    for (auto piece = at + 1; piece != pieces.begin() + last + 1; ++piece) {
        changed.length += piece->length;
        changed.height += piece->height;
    }
    changed.length += growth;
    changed.height = std::max(0.0, changed.height + growth * cutting.unitsPerCharacter);
    changed.release();
    pieces.erase(at + 1, pieces.begin() + last + 1);
    for (auto piece = pieces.begin(); piece != at; ++piece) {
        if (piece->layout)
            piece->layout->changedFrom(from);
    }
    for (auto piece = at + 1; piece != pieces.end(); ++piece) {
        if (piece->layout)
            piece->layout->changedUpTo(from + removed);
        piece->moveBy(growth);
    }
    if (at + 1 != pieces.end())
        (at + 1)->isFirm = false;
    if (first == 0)
        hanging.reset();
    if (from <= directionAt)
        directionAt = -1;
    if (changed.length == 0 && pieces.size() > 1) {
        pieces.erase(at);
        pieces.front().isFirm = true;
    } else {
        splitLong(first, cutting);
    }
}

void ParagraphBox::release(int from, int to)
{
    const int first = std::max(0, pieceAt(from) - 1);
    const int last = pieceAt(std::max(from, to - 1));
    for (int i = first; i <= last; ++i) {
        pieces[std::size_t(i)].release();
        pieces[std::size_t(i)].isFirm = i == 0 || (i == first && pieces[std::size_t(i)].isFirm);
    }
    if (last + 1 < int(pieces.size()))
        pieces[std::size_t(last) + 1].isFirm = false;
    if (first == 0)
        hanging.reset();
    for (ParagraphPiece& piece : pieces) {
        if (!piece.layout)
            continue;
        if (piece.start < from)
            piece.layout->changedFrom(from);
        else
            piece.layout->changedUpTo(to);
    }
}

void ParagraphBox::place(int index, BrokenPiece broken, const Cutting& cutting)
{
    const int textEnd = textLength();
    ParagraphPiece& piece = pieces[std::size_t(index)];
    piece.length = broken.length;
    piece.height = broken.height;
    piece.lines = std::move(broken.lines);
    piece.layout = std::move(broken.layout);
    const int end = piece.end();
    auto next = pieces.begin() + index + 1;
    const auto beyond =
        std::find_if(next, pieces.end(), [end](const auto& other) { return other.end() > end; });
    next = pieces.erase(next, beyond);
    if (end >= textEnd)
        return;
    if (next == pieces.end()) {
        next = pieces.emplace(next);
        next->start = textEnd;
    }
    if (const int growth = next->start - end; growth != 0) {
        next->start = end;
        next->length += growth;
        next->height = std::max(0.0, next->height + growth * cutting.unitsPerCharacter);
        next->lines.clear(); // its layout may serve for lines that begin elsewhere
        if (next + 1 != pieces.end())
            (next + 1)->isFirm = false;
    }
    next->isFirm = true;
    splitLong(index + 1, cutting);
}

void ParagraphBox::moveStart(int index, int distance)
{
    ParagraphPiece& piece = pieces[std::size_t(index)];
    piece.start += distance;
    piece.length -= distance;
    pieces[std::size_t(index) - 1].length += distance;
}

ParagraphBox* ParagraphBoxes::find(const QTextBlock& block, const void* layout)
{
    const auto* boxes = static_cast<ParagraphBoxes*>(block.userData());
    if (!boxes)
        return nullptr;
    const auto entry = std::find_if(boxes->m_entries.begin(), boxes->m_entries.end(),
                                    [&](const Entry& one) { return one.layout == layout; });
    return entry == boxes->m_entries.end() ? nullptr : entry->box.get();
}

ParagraphBox& ParagraphBoxes::make(const QTextBlock& block, const void* layout)
{
    auto* boxes = static_cast<ParagraphBoxes*>(block.userData());
    if (!boxes) {
        boxes = new ParagraphBoxes; // the document's
        QTextBlock(block).setUserData(boxes);
    }
    boxes->m_entries.push_back({layout, std::make_unique<ParagraphBox>()});
    return *boxes->m_entries.back().box;
}

void ParagraphBoxes::remove(const QTextBlock& block, const void* layout)
{
    auto* boxes = static_cast<ParagraphBoxes*>(block.userData());
    if (!boxes)
        return;
    std::erase_if(boxes->m_entries, [&](const Entry& one) { return one.layout == layout; });
    if (boxes->m_entries.empty())
        QTextBlock(block).setUserData(nullptr);
}

} // namespace orvane
