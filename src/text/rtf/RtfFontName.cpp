// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/RtfFontName.h"

#include <QSet>

namespace orvane {

using namespace Qt::StringLiterals;

QString rtfFontFamily(const QString& name)
{
    static const QSet<QString> styles{
        u"regular"_s,      u"roman"_s,          u"book"_s,         u"medium"_s,
        u"semibold"_s,     u"demibold"_s,       u"bold"_s,         u"black"_s,
        u"heavy"_s,        u"light"_s,          u"thin"_s,         u"italic"_s,
        u"oblique"_s,      u"bolditalic"_s,     u"boldoblique"_s,  u"lightitalic"_s,
        u"mediumitalic"_s, u"semibolditalic"_s, u"lightoblique"_s,
    };
    const QString family = name.trimmed();
    const qsizetype hyphen = family.lastIndexOf(u'-');
    if (hyphen > 0 && styles.contains(family.sliced(hyphen + 1).toLower()))
        return family.first(hyphen);
    return family;
}

} // namespace orvane
