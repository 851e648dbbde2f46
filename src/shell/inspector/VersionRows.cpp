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
    const bool isThisYear = day.year() == now.toLocal().date().year();
    return words.toString(day, isThisYear ? u"d MMMM"_s : u"d MMMM yyyy"_s);
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
    using Kind = VersionRow::Kind;
    QList<VersionRow> rows;
    rows.reserve(newestFirst.size() + 8);
    rows.append({Kind::Now, Words::tr("Now"), Words::tr("%Ln words", nullptr, wordsNow), {}, -1});
    int later = wordsNow;
    QString dayBefore;
    for (qsizetype i = 0; i < newestFirst.size(); ++i) {
        const NoteVersionSummary& version = newestFirst.at(i);
        const QString day = versionDay(version.capturedAt, now);
        if (day != dayBefore)
            rows.append({Kind::Day, day, {}, {}, -1});
        dayBefore = day;
        const QString words = Words::tr("%Ln words", nullptr, version.wordCount);
        const bool isLabelled = version.label && !version.label->isEmpty();
        rows.append(
            {Kind::Version, version.capturedAt.toLocal().toString(u"HH:mm"_s),
             isLabelled
                 ? Words::tr("%1, %2", "label and number of words").arg(*version.label, words)
                 : words,
             differenceInWords(version.wordCount, later), int(i)});
        later = version.wordCount;
    }
    return rows;
}

} // namespace orvane
