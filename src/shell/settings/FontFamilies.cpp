// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/settings/FontFamilies.h"

#include <QFontDatabase>

namespace orvane {

using namespace Qt::StringLiterals;

QList<Choice> fontFamilyChoices()
{
    QList<Choice> choices{{u"Georgia"_s, u"Georgia"_s}, {u"Menlo"_s, u"Menlo"_s}};
    for (const QString& family : QFontDatabase::families(QFontDatabase::Latin)) {
        const bool known = family == choices[0].stored || family == choices[1].stored;
        if (!known && !QFontDatabase::isPrivateFamily(family))
            choices.append({family, family});
    }
    return choices;
}

} // namespace orvane
