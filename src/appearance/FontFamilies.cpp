// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/FontFamilies.h"

#include <QFontDatabase>

namespace orvane {

using namespace Qt::StringLiterals;

QStringList writingFontFamilies()
{
    QStringList families{u"Georgia"_s, u"Menlo"_s};
    for (const QString& each : QFontDatabase::families(QFontDatabase::Latin)) {
        // A family of two foundries is listed twice, as "Name [foundry]".
        const QString family = each.section(u" ["_s, 0, 0);
        if (!families.contains(family) && !QFontDatabase::isPrivateFamily(each))
            families.append(family);
    }
    return families;
}

} // namespace orvane
