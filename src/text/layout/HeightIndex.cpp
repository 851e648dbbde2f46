// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/layout/HeightIndex.h"

#include <algorithm>
#include <numeric>

namespace orvane {

namespace {
constexpr std::size_t chunkLength = 512;

double sumOf(std::span<const double> heights)
{
    return std::accumulate(heights.begin(), heights.end(), 0.0);
}
} // namespace

void HeightIndex::Chunk::recount()
{
    // Summed anew each time, so that no rounding error can pile up.
    sum = sumOf(heights);
}

HeightIndex::Place HeightIndex::find(qsizetype index) const
{
    std::size_t chunk = 0;
    while (chunk + 1 < m_chunks.size() && index >= qsizetype(m_chunks[chunk].heights.size()))
        index -= qsizetype(m_chunks[chunk++].heights.size());
    return {chunk, index};
}

double HeightIndex::total() const
{
    return topOf(m_size);
}

double HeightIndex::at(qsizetype index) const
{
    Q_ASSERT(index >= 0 && index < m_size);
    const Place place = find(index);
    return m_chunks[place.chunk].heights[std::size_t(place.offset)];
}

double HeightIndex::topOf(qsizetype index) const
{
    Q_ASSERT(index >= 0 && index <= m_size);
    double top = 0;
    for (const Chunk& chunk : m_chunks) {
        const auto length = qsizetype(chunk.heights.size());
        if (index < length)
            return top + sumOf(std::span(chunk.heights).first(std::size_t(index)));
        top += chunk.sum;
        index -= length;
    }
    return top;
}

qsizetype HeightIndex::indexAt(double y) const
{
    Q_ASSERT(m_size > 0);
    qsizetype index = 0;
    qsizetype lastVisible = 0;
    for (const Chunk& chunk : m_chunks) {
        if (y >= chunk.sum) {
            for (auto i = chunk.heights.size(); i-- > 0;) {
                if (chunk.heights[i] > 0) {
                    lastVisible = index + qsizetype(i);
                    break;
                }
            }
            y -= chunk.sum;
            index += qsizetype(chunk.heights.size());
            continue;
        }
        for (const double height : chunk.heights) {
            if (y < height)
                return index;
            if (height > 0)
                lastVisible = index;
            y -= height;
            ++index;
        }
    }
    return lastVisible;
}

void HeightIndex::assign(std::span<const double> heights)
{
    m_chunks.clear();
    m_size = qsizetype(heights.size());
    for (std::size_t from = 0; from < heights.size(); from += chunkLength) {
        const auto part = heights.subspan(from, std::min(chunkLength, heights.size() - from));
        m_chunks.push_back({{part.begin(), part.end()}, sumOf(part)});
    }
}

void HeightIndex::set(qsizetype index, double height)
{
    Q_ASSERT(index >= 0 && index < m_size);
    const Place place = find(index);
    Chunk& chunk = m_chunks[place.chunk];
    chunk.heights[std::size_t(place.offset)] = height;
    chunk.recount();
}

void HeightIndex::replace(qsizetype first, qsizetype removed, std::span<const double> heights)
{
    Q_ASSERT(first >= 0 && removed >= 0 && first + removed <= m_size);
    if (m_chunks.empty()) {
        assign(heights);
        return;
    }
    m_size += qsizetype(heights.size()) - removed;
    const Place place = find(first);
    Chunk& chunk = m_chunks[place.chunk];
    const auto here = std::min(removed, qsizetype(chunk.heights.size()) - place.offset);
    const auto from = chunk.heights.begin() + place.offset;
    chunk.heights.insert(chunk.heights.erase(from, from + here), heights.begin(), heights.end());
    chunk.recount();

    qsizetype left = removed - here;
    std::size_t pastWhole = place.chunk + 1;
    while (left > 0 && left >= qsizetype(m_chunks[pastWhole].heights.size()))
        left -= qsizetype(m_chunks[pastWhole++].heights.size());
    if (left > 0) {
        Chunk& last = m_chunks[pastWhole];
        last.heights.erase(last.heights.begin(), last.heights.begin() + left);
        last.recount();
    }
    m_chunks.erase(m_chunks.begin() + std::ptrdiff_t(place.chunk) + 1,
                   m_chunks.begin() + std::ptrdiff_t(pastWhole));
    splitIfLong(place.chunk);
}

void HeightIndex::splitIfLong(std::size_t index)
{
    if (m_chunks[index].heights.empty()) {
        m_chunks.erase(m_chunks.begin() + std::ptrdiff_t(index));
        return;
    }
    if (m_chunks[index].heights.size() <= 2 * chunkLength)
        return;
    HeightIndex parts;
    parts.assign(m_chunks[index].heights);
    m_chunks.erase(m_chunks.begin() + std::ptrdiff_t(index));
    m_chunks.insert(m_chunks.begin() + std::ptrdiff_t(index),
                    std::make_move_iterator(parts.m_chunks.begin()),
                    std::make_move_iterator(parts.m_chunks.end()));
}

} // namespace orvane
