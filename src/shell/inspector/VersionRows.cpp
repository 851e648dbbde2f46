// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/inspector/VersionRows.h"

#include "core/records/Wording.h"

#include <QCoreApplication>
#include <QLocale>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(VersionRows)
};

} // namespace

QString versionDay(Timestamp moment, Timestamp now)
{
    const QDate day = moment.toLocal().date();
    const qint64 daysAgo = day.daysTo(now.toLocal().date());
    if (daysAgo == 0)
        return Words::tr("Today");
    if (daysAgo == 1)
        return Words::tr("Yesterday");
    static const QLocale words(QLocale::English, QLocale::UnitedKingdom);
    return words.toString(day, u"MMM d"_s);
}

QString versionMoment(Timestamp moment, Timestamp now)
{
    return Words::tr("%1, %2").arg(versionDay(moment, now), moment.toLocal().toString(u"HH:mm"_s));
}

QString differenceInWords(int earlier, int later)
{
    if (earlier == later)
        return {};
    return earlier < later ? Words::tr("%1 fewer").arg(grouped(later - earlier))
                           : Words::tr("%1 more").arg(grouped(earlier - later));
}

QList<VersionRow> versionRows(const QList<NoteVersionSummary>& newestFirst, int wordsNow,
                              Timestamp now)
{
    QList<VersionRow> rows;
    rows.reserve(newestFirst.size() + 1);
    rows.append({Words::tr("Now"), Words::tr("%Ln words", nullptr, int(wordsNow))});
    int later = wordsNow;
    for (const NoteVersionSummary& version : newestFirst) {
        const int words = version.wordCount;
        QStringList parts;
        if (version.label && !version.label->isEmpty())
            parts.append(*version.label);
        parts.append(Words::tr("%Ln words", nullptr, int(words)));
        if (const QString difference = differenceInWords(words, later); !difference.isEmpty())
            parts.append(difference);
        rows.append({versionMoment(version.capturedAt, now), parts.join(u", "_s)});
        later = words;
    }
    return rows;
}

} // namespace orvane
