// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/layout/HeightIndex.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

namespace orvane {
namespace {

qsizetype naiveIndexAt(const std::vector<double>& heights, double y)
{
    qsizetype last = 0;
    double top = 0;
    for (std::size_t i = 0; i < heights.size(); ++i) {
        if (heights[i] > 0)
            last = qsizetype(i);
        if (y < top + heights[i])
            return qsizetype(i);
        top += heights[i];
    }
    return last;
}

// Whole numbers throughout, so that sums are exact and can be compared for equality.
TEST(HeightIndex, AgreesWithPlainListUnderRandomChanges)
{
    for (const unsigned seed : {1U, 2U, 3U}) {
        std::mt19937 random(seed);
        const auto below = [&](qsizetype n) {
            return qsizetype(random() % std::size_t(n));
        };
        const auto some = [&](qsizetype count) {
            std::vector<double> heights;
            for (qsizetype i = 0; i < count; ++i)
                heights.push_back(below(5) == 0 ? 0 : double(below(90)));
            return heights;
        };
        std::vector<double> model = some(3000);
        HeightIndex index;
        index.assign(model);
        for (int step = 0; step < 400; ++step) {
            const qsizetype first = below(qsizetype(model.size()) + 1);
            const qsizetype removed =
                std::min(qsizetype(model.size()) - first, below(step % 7 == 0 ? 2500 : 4));
            const std::vector<double> added = some(below(step % 5 == 0 ? 2500 : 4));
            index.replace(first, removed, added);
            model.erase(model.begin() + first, model.begin() + first + removed);
            model.insert(model.begin() + first, added.begin(), added.end());
            ASSERT_EQ(index.size(), qsizetype(model.size())) << "step " << step;
            if (model.empty())
                continue;
            const qsizetype changed = below(qsizetype(model.size()));
            model[std::size_t(changed)] = double(below(90));
            index.set(changed, model[std::size_t(changed)]);

            const double total = std::accumulate(model.begin(), model.end(), 0.0);
            ASSERT_EQ(index.total(), total);
            const qsizetype probe = below(qsizetype(model.size()) + 1);
            ASSERT_EQ(index.topOf(probe),
                      std::accumulate(model.begin(), model.begin() + probe, 0.0));
            const double y = double(below(qsizetype(total) + 200)) - 100;
            ASSERT_EQ(index.indexAt(y), naiveIndexAt(model, y)) << "y " << y << " step " << step;
        }
    }
}

} // namespace
} // namespace orvane
