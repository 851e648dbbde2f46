// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/rtf/RtfFontName.h"

#include <QSet>

#include <algorithm>
#include <array>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

struct ScriptRow {
    int charset;
    QStringView suffix;
};

constexpr std::array scripts{
    ScriptRow{161, u" Greek"},    ScriptRow{162, u" Tur"},      ScriptRow{163, u" (Vietnamese)"},
    ScriptRow{177, u" (Hebrew)"}, ScriptRow{178, u" (Arabic)"}, ScriptRow{186, u" Baltic"},
    ScriptRow{204, u" Cyr"},      ScriptRow{222, u" (Thai)"},   ScriptRow{238, u" CE"},
};

QString withoutScript(const QString& family, int charset)
{
    const auto script = std::ranges::find(scripts, charset, &ScriptRow::charset);
    const bool hasSuffix = script != scripts.end() && family.endsWith(script->suffix);
    return hasSuffix ? family.chopped(script->suffix.size()) : family;
}

} // namespace

QString rtfFontFamily(const QString& name, int charset)
{
    static const QSet<QString> styles{
        u"regular"_s,      u"roman"_s,          u"book"_s,         u"medium"_s,
        u"semibold"_s,     u"demibold"_s,       u"bold"_s,         u"black"_s,
        u"heavy"_s,        u"light"_s,          u"thin"_s,         u"italic"_s,
        u"oblique"_s,      u"bolditalic"_s,     u"boldoblique"_s,  u"lightitalic"_s,
        u"mediumitalic"_s, u"semibolditalic"_s, u"lightoblique"_s,
    };
    QString family = withoutScript(name.trimmed(), charset);
    const qsizetype hyphen = family.lastIndexOf(u'-');
    if (hyphen > 0 && styles.contains(family.sliced(hyphen + 1).toLower()))
        return family.first(hyphen);
    return family;
}

} // namespace orvane
