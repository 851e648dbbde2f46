// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/records/Wording.h"

#include <QCoreApplication>
#include <QLocale>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(Wording)
};

const QLocale& words()
{
    static const QLocale locale(QLocale::English, QLocale::UnitedKingdom);
    return locale;
}

} // namespace

QString momentInWords(Timestamp moment, Timestamp now)
{
    const QDateTime then = moment.toLocal();
    const QDate today = now.toLocal().date();
    if (then.date() == today)
        return Words::tr("today, %1").arg(then.toString(u"HH:mm"_s));
    if (then.date().daysTo(today) == 1)
        return Words::tr("yesterday");
    if (then.date().year() == today.year())
        return words().toString(then.date(), u"d MMMM"_s);
    return dayInWords(moment);
}

QString dayInWords(Timestamp moment)
{
    return words().toString(moment.toLocal().date(), u"d MMMM yyyy"_s);
}

QString dayOfMonthInWords(Timestamp moment)
{
    return words().toString(moment.toLocal().date(), u"d MMMM"_s);
}

QString timeInWords(Timestamp moment)
{
    return words().toString(moment.toLocal().time(), u"HH:mm"_s);
}

QString grouped(qsizetype number)
{
    return words().toString(qlonglong(number));
}

QString shortPath(const QString& path, const QString& home)
{
    return path.startsWith(home + u'/') ? path.mid(home.size() + 1) : path;
}

} // namespace orvane
