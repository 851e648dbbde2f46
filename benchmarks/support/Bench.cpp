// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "support/Bench.h"

#include <cstdio>
#include <string_view>

namespace orvane::bench {

namespace {

std::vector<Row>& rows()
{
    static std::vector<Row> all;
    return all;
}

bool wanted(const Row& row, const std::vector<std::string_view>& names)
{
    return names.empty() || std::any_of(names.begin(), names.end(), [&](std::string_view name) {
               return row.name == name || (name.ends_with('/') && row.name.starts_with(name));
           });
}

} // namespace

void add(Row row)
{
    rows().push_back(std::move(row));
}

int runMain(int argc, char** argv)
{
    const std::vector<std::string_view> names(argv + 1, argv + argc);
    const bool listing = names.size() == 1 && names[0] == "--list";
    for (const Row& row : rows()) {
        if (listing) {
            std::printf("%s\n", row.name.c_str());
            continue;
        }
        if (!wanted(row, names))
            continue;
        const Measurement measured = row.run();
        const double ratio = measured.baseline > 0 ? measured.figure / measured.baseline : 0;
        const bool ofRatio = row.targetOf == TargetOf::Ratio;
        const bool holds = (ofRatio ? ratio : measured.figure) <= row.target;
        std::printf("{\"name\":\"%s\",\"figure\":%.6g,\"unit\":\"%s\",\"baseline\":%.6g,"
                    "\"ratio\":%.4g,\"target\":%.6g,\"targetOf\":\"%s\",\"holds\":%s}\n",
                    row.name.c_str(), measured.figure, row.unit.c_str(), measured.baseline, ratio,
                    row.target, ofRatio ? "ratio" : "figure", holds ? "true" : "false");
        std::fflush(stdout);
    }
    return 0;
}

} // namespace orvane::bench
