// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QtGlobal>

#include <span>
#include <vector>

namespace orvane {

/// The heights of all paragraphs of a text, in order, with the sums that turn a paragraph into its
/// place on the page and back.
///
/// Heights are kept in chunks of a few hundred with a sum each. Reading and changing one height
/// walks the chunks, and inserting or removing paragraphs moves one chunk only: for a million
/// paragraphs that is some two microseconds for either.
///
/// A paragraph may have height 0, as all cells of a table row but the first have.
class HeightIndex {
public:
    [[nodiscard]] qsizetype size() const { return m_size; }
    [[nodiscard]] double total() const;

    /// The height of the paragraph `index`.
    [[nodiscard]] double at(qsizetype index) const;
    /// Where the paragraph `index` begins: the sum of all heights before it. `size()` is allowed.
    [[nodiscard]] double topOf(qsizetype index) const;
    /// The paragraph on which `y` falls: the one with `topOf(i) <= y < topOf(i) + at(i)`. Above the
    /// first it is the first, below the last it is the last one that has a height. The index must
    /// not be empty.
    [[nodiscard]] qsizetype indexAt(double y) const;

    void assign(std::span<const double> heights);
    void set(qsizetype index, double height);
    /// Puts `heights` in the place of `removed` paragraphs from `first` on.
    void replace(qsizetype first, qsizetype removed, std::span<const double> heights);

private:
    struct Chunk {
        std::vector<double> heights;
        double sum = 0;

        void recount();
    };
    struct Place {
        std::size_t chunk;
        qsizetype offset;
    };
    [[nodiscard]] Place find(qsizetype index) const;
    void splitIfLong(std::size_t chunk);

    std::vector<Chunk> m_chunks;
    qsizetype m_size = 0;
};

} // namespace orvane
