// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/FontFamilies.h"

#include <QFontDatabase>

namespace orvane {

using namespace Qt::StringLiterals;

QStringList writingFontFamilies()
{
    QStringList families{u"Georgia"_s, u"Menlo"_s};
    for (const QString& family : QFontDatabase::families(QFontDatabase::Latin)) {
        if (!families.contains(family) && !QFontDatabase::isPrivateFamily(family))
            families.append(family);
    }
    return families;
}

} // namespace orvane
