// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/spelling/PersonalWordList.h"

#include <QFileInfo>

namespace orvane {

namespace {

QString asKept(const QString& word)
{
    return QString(word)
        .replace(u'\u2019', u'\'')
        .remove(u'\u00ad')
        .trimmed()
        .normalized(QString::NormalizationForm_C);
}

} // namespace

PersonalWordList::PersonalWordList(const QString& path, QObject* parent)
    : QObject(parent)
    , m_path(path)
{
    (void)takeOver();
}

std::expected<void, FileError> PersonalWordList::takeOver()
{
    if (m_path.isEmpty())
        return {};
    const auto bytes = readFile(m_path, FileLimit::personalWords);
    if (!bytes && bytes.error().code == FileError::Code::NotFound)
        return {};
    if (!bytes)
        return std::unexpected(bytes.error());
    for (const QString& line : QString::fromUtf8(*bytes).split(u'\n')) {
        if (const QString word = asKept(line); !word.isEmpty())
            m_learned.insert(word);
    }
    return {};
}

bool PersonalWordList::accepts(const QString& word) const
{
    const auto holds = [this](const QString& form) {
        return m_learned.contains(form) || m_ignored.contains(form);
    };
    if (m_learned.isEmpty() && m_ignored.isEmpty())
        return false;
    const QString written = asKept(word);
    if (written.isEmpty() || holds(written))
        return true;
    if (!written.front().isUpper())
        return false;
    const QString lower = written.toLower();
    const bool isCapitalised = QStringView(written).sliced(1) == QStringView(lower).sliced(1);
    return (isCapitalised || written == written.toUpper()) && holds(lower);
}

std::expected<void, FileError> PersonalWordList::learn(const QString& word)
{
    const QString kept = asKept(word);
    if (kept.isEmpty() || m_learned.contains(kept))
        return {};
    const auto taken = takeOver();
    m_learned.insert(kept);
    auto written = taken ? write() : taken;
    emit changed();
    return written;
}

std::expected<void, FileError> PersonalWordList::forget(const QString& word)
{
    const QString kept = asKept(word);
    if (!m_learned.contains(kept))
        return {};
    const auto taken = takeOver();
    m_learned.remove(kept);
    auto written = taken ? write() : taken;
    emit changed();
    return written;
}

void PersonalWordList::ignore(const QString& word)
{
    m_ignored.insert(asKept(word));
    emit changed();
}

QStringList PersonalWordList::words() const
{
    QStringList words = m_learned.values();
    words.sort();
    return words;
}

std::expected<void, FileError> PersonalWordList::write()
{
    if (m_path.isEmpty())
        return {};
    if (const auto folder = makeFolder(QFileInfo(m_path).absolutePath()); !folder)
        return folder;
    return writeFileAtomically(m_path, words().join(u'\n').toUtf8() + '\n');
}

} // namespace orvane
