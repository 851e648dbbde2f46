// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/records/SequenceDifference.h"

#include <algorithm>
#include <optional>

namespace orvane {

namespace {

struct Box {
    int left, right; // of the first sequence
    int top, bottom; // of the second

    [[nodiscard]] int width() const { return right - left; }
    [[nodiscard]] int height() const { return bottom - top; }
};

struct Point {
    int x, y;
};

class Comparison {
public:
    Comparison(std::span<const int> before, std::span<const int> after, qint64& budget)
        : m_before(before)
        , m_after(after)
        , m_budget(budget)
        , m_middle(int(before.size() + after.size()) / 2 + 2)
        , m_forward(size_t(2 * m_middle + 1))
        , m_backward(size_t(2 * m_middle + 1))
        , m_result{std::vector<char>(before.size()), std::vector<char>(after.size())}
    {}

    SequenceDifference run()
    {
        compare({0, int(m_before.size()), 0, int(m_after.size())});
        return std::move(m_result);
    }

private:
    void compare(Box box)
    {
        while (box.width() > 0 && box.height() > 0 && agrees(box.left, box.top))
            ++box.left, ++box.top;
        while (box.width() > 0 && box.height() > 0 && agrees(box.right - 1, box.bottom - 1))
            --box.right, --box.bottom;
        std::optional<Point> split;
        if (box.width() > 0 && box.height() > 0)
            split = middleOf(box);
        if (!split) {
            std::fill(m_result.removed.begin() + box.left, m_result.removed.begin() + box.right, 1);
            std::fill(m_result.added.begin() + box.top, m_result.added.begin() + box.bottom, 1);
            return;
        }
        compare({box.left, split->x, box.top, split->y});
        compare({split->x, box.right, split->y, box.bottom});
    }

    /// A point on a shortest path, where the searches from both corners meet. The box begins and
    /// ends with a difference, so the point is no corner.
    std::optional<Point> middleOf(const Box& box)
    {
        const int width = box.width();
        const int height = box.height();
        const int delta = width - height;
        at(m_forward, 1) = 0;
        at(m_backward, 1) = 0;
        for (int d = 0; d <= (width + height + 1) / 2; ++d) {
            const int lowest = -(d - 2 * std::max(0, d - height));
            const int highest = d - 2 * std::max(0, d - width);
            for (int k = lowest; k <= highest; k += 2) {
                const int x = advance(m_forward, d, k, box, Direction::Forward);
                const bool met = delta % 2 != 0 && std::abs(delta - k) < d &&
                                 x + at(m_backward, delta - k) >= width;
                if (met)
                    return Point{box.left + x, box.top + x - k};
            }
            for (int k = lowest; k <= highest; k += 2) {
                const int x = advance(m_backward, d, k, box, Direction::Backward);
                const bool met = delta % 2 == 0 && std::abs(delta - k) <= d &&
                                 x + at(m_forward, delta - k) >= width;
                if (met)
                    return Point{box.right - x, box.bottom - (x - k)};
            }
            if (m_budget < 0)
                return std::nullopt;
        }
        return std::nullopt;
    }

    enum class Direction { Forward, Backward };

    /// The furthest point on diagonal `k` with `d` differences, as steps from the corner.
    int advance(std::vector<int>& furthest, int d, int k, const Box& box, Direction direction)
    {
        const bool isDown = k == -d || (k != d && at(furthest, k - 1) < at(furthest, k + 1));
        int x = isDown ? at(furthest, k + 1) : at(furthest, k - 1) + 1;
        const int start = x;
        if (direction == Direction::Forward) {
            while (x < box.width() && x - k < box.height() && agrees(box.left + x, box.top + x - k))
                ++x;
        } else {
            while (x < box.width() && x - k < box.height() &&
                   agrees(box.right - 1 - x, box.bottom - 1 - (x - k)))
                ++x;
        }
        m_budget -= 1 + x - start;
        return at(furthest, k) = x;
    }

    [[nodiscard]] bool agrees(int x, int y) const
    {
        return m_before[size_t(x)] == m_after[size_t(y)];
    }
    int& at(std::vector<int>& furthest, int k) const
    {
        return furthest[size_t(qsizetype(m_middle) + k)];
    }

    std::span<const int> m_before;
    std::span<const int> m_after;
    qint64& m_budget;
    int m_middle;
    std::vector<int> m_forward;
    std::vector<int> m_backward;
    SequenceDifference m_result;
};

} // namespace

SequenceDifference sequenceDifference(std::span<const int> before, std::span<const int> after,
                                      qint64& budget)
{
    return Comparison(before, after, budget).run();
}

} // namespace orvane
