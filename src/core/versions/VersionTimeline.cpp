// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/versions/VersionTimeline.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>

#include <cstring>

namespace orvane::VersionTimeline {

using namespace Qt::StringLiterals;

namespace {

using Piece = NoteVersionSummary::Piece;

QJsonObject toJson(const NoteVersionSnapshot& snapshot)
{
    QJsonObject object{
        {"id"_L1, uuidText(snapshot.id)},
        {"noteID"_L1, uuidText(snapshot.noteID)},
        {"capturedAt"_L1, toIso8601(snapshot.capturedAt)},
        {"title"_L1, snapshot.title},
        {"bodyPlain"_L1, snapshot.bodyPlain},
    };
    if (snapshot.bodyRTFBase64)
        object.insert("bodyRTFBase64"_L1, *snapshot.bodyRTFBase64);
    if (snapshot.label)
        object.insert("label"_L1, *snapshot.label);
    if (snapshot.wordCount)
        object.insert("wordCount"_L1, *snapshot.wordCount);
    if (snapshot.richContentPayloadBase64)
        object.insert("richContentPayloadBase64"_L1, *snapshot.richContentPayloadBase64);
    return object;
}

std::expected<NoteVersionSnapshot, JsonError> fromJson(const QJsonValue& value)
{
    JsonObjectReader reader(value);
    NoteVersionSnapshot snapshot;
    snapshot.id = reader.uuid("id"_L1);
    snapshot.noteID = reader.uuid("noteID"_L1);
    snapshot.capturedAt = reader.date("capturedAt"_L1);
    snapshot.title = reader.string("title"_L1);
    snapshot.bodyPlain = reader.string("bodyPlain"_L1);
    snapshot.bodyRTFBase64 = reader.optionalString("bodyRTFBase64"_L1);
    snapshot.label = reader.optionalString("label"_L1);
    if (const auto words = reader.optionalNumber("wordCount"_L1))
        snapshot.wordCount = int(*words);
    snapshot.richContentPayloadBase64 = reader.optionalString("richContentPayloadBase64"_L1);
    return reader.finish(std::move(snapshot));
}

bool isLongText(QByteArrayView quotedKey)
{
    return quotedKey == "\"bodyPlain\"" || quotedKey == "\"bodyRTFBase64\"" ||
           quotedKey == "\"richContentPayloadBase64\"";
}

/// Finds the versions of a timeline without decoding what is long. What is found is decoded and
/// checked by others; all that is promised here is where each begins and ends.
class TimelineScanner {
public:
    explicit TimelineScanner(QByteArrayView text)
        : m_text(text)
    {}

    /// An object of the array, and the same object with its long texts left empty.
    struct Entry {
        Piece piece;
        QByteArray withoutLongTexts;
    };

    /// Nothing where the text is no array of objects.
    std::optional<QList<Entry>> entries()
    {
        if (m_text.startsWith("\xEF\xBB\xBF"))
            m_at = 3;
        QList<Entry> found;
        if (!takes('['))
            return std::nullopt;
        if (!takes(']')) {
            do {
                auto each = entry();
                if (!each)
                    return std::nullopt;
                found.append(*std::move(each));
            } while (takes(','));
            if (!takes(']'))
                return std::nullopt;
        }
        passBlanks();
        return m_at == m_text.size() ? std::optional(found) : std::nullopt;
    }

private:
    [[nodiscard]] bool stands(char c) const { return m_at < m_text.size() && m_text[m_at] == c; }

    void passBlanks()
    {
        while (stands(' ') || stands('\n') || stands('\r') || stands('\t'))
            ++m_at;
    }

    bool takes(char c)
    {
        passBlanks();
        if (!stands(c))
            return false;
        ++m_at;
        return true;
    }

    std::optional<Entry> entry()
    {
        if (!takes('{'))
            return std::nullopt;
        Entry entry{{m_at - 1, 0}, "{"};
        bool isFirst = true;
        while (!takes('}')) {
            if (!isFirst && !takes(','))
                return std::nullopt;
            const auto key = value();
            if (!key || !takes(':'))
                return std::nullopt;
            const auto text = value();
            if (!text)
                return std::nullopt;
            if (!isFirst)
                entry.withoutLongTexts += ',';
            entry.withoutLongTexts.append(*key).append(':');
            entry.withoutLongTexts.append(isLongText(*key) && text->startsWith('"') ? "\"\""
                                                                                    : *text);
            isFirst = false;
        }
        entry.withoutLongTexts += '}';
        entry.piece.size = m_at - entry.piece.at;
        return entry;
    }

    /// The text of a value of any kind.
    std::optional<QByteArrayView> value()
    {
        passBlanks();
        const qsizetype start = m_at;
        const bool passed = stands('"')                  ? passString()
                            : stands('{') || stands('[') ? passContainer()
                                                         : passWord();
        return passed ? std::optional(m_text.sliced(start, m_at - start)) : std::nullopt;
    }

    bool passString()
    {
        qsizetype from = ++m_at;
        while (const void* hit =
                   std::memchr(m_text.data() + m_at, '"', size_t(m_text.size() - m_at))) {
            const qsizetype quote = static_cast<const char*>(hit) - m_text.data();
            qsizetype slashes = 0;
            while (quote - slashes > from && m_text[quote - slashes - 1] == '\\')
                ++slashes;
            m_at = from = quote + 1;
            if (slashes % 2 == 0)
                return true;
        }
        return false;
    }

    bool passContainer()
    {
        qsizetype depth = 0;
        do {
            if (m_at >= m_text.size())
                return false;
            if (stands('"')) {
                if (!passString())
                    return false;
                continue;
            }
            depth += int(stands('{') || stands('[')) - int(stands('}') || stands(']'));
            ++m_at;
        } while (depth > 0);
        return true;
    }

    bool passWord()
    {
        const qsizetype start = m_at;
        while (m_at < m_text.size() && !std::strchr(",:]}[{\" \n\r\t", m_text[m_at]))
            ++m_at;
        return m_at > start;
    }

    QByteArrayView m_text;
    qsizetype m_at = 0;
};

constexpr QByteArrayView arrayStart("[\n    ");
constexpr QByteArrayView separator(",\n    ");
constexpr QByteArrayView arrayEnd("\n]\n");

std::expected<QJsonValue, JsonError> parsed(const QByteArray& text, const QString& path)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (document.isArray())
        return document.array();
    if (document.isObject())
        return document.object();
    return std::unexpected(JsonError{path, error.errorString()});
}

QString placeOf(qsizetype entry)
{
    return u"[%1]"_s.arg(entry);
}

// Which of those that were kept in the same stretch of time stays; the stretches grow with age.
std::pair<int, qint64> stretchOf(Timestamp moment, Timestamp now)
{
    constexpr qint64 hour = 3'600'000;
    constexpr qint64 day = 24 * hour;
    const qint64 age = now.msecs - moment.msecs;
    if (age < day)
        return {0, moment.msecs / hour};
    if (age < 30 * day)
        return {1, moment.msecs / day};
    const QDate date = QDateTime::fromMSecsSinceEpoch(moment.msecs, Qt::UTC).date();
    return {2, date.year() * 12 + date.month()};
}

} // namespace

std::expected<QList<NoteVersionSummary>, JsonError> summaries(const QByteArray& timeline)
{
    const auto entries = TimelineScanner(timeline).entries();
    if (!entries)
        return std::unexpected(JsonError{{}, u"no array of versions"_s});
    QList<NoteVersionSummary> found;
    found.reserve(entries->size());
    for (const auto& entry : *entries) {
        const auto value = parsed(entry.withoutLongTexts, placeOf(found.size()));
        auto version = value ? fromJson(*value) : std::unexpected(value.error());
        // One that doesn't say how many words it has is counted.
        if (version && !version->wordCount) {
            version = decodedPiece(timeline.sliced(entry.piece.at, entry.piece.size));
            if (version)
                version->wordCount = wordCount(version->bodyPlain);
        }
        if (!version)
            return std::unexpected(version.error());
        found.append({version->id, version->noteID, version->capturedAt, version->title,
                      version->label, *version->wordCount, entry.piece});
    }
    return found;
}

std::expected<QList<NoteVersionSnapshot>, JsonError> decoded(const QByteArray& timeline)
{
    const auto value = parsed(timeline, {});
    if (!value)
        return std::unexpected(value.error());
    if (!value->isArray())
        return std::unexpected(JsonError{{}, u"no array of versions"_s});
    QList<NoteVersionSnapshot> found;
    const QJsonArray array = value->toArray();
    found.reserve(array.size());
    for (const QJsonValue each : array) {
        auto version = fromJson(each);
        if (!version)
            return std::unexpected(version.error());
        found.append(*std::move(version));
    }
    return found;
}

std::expected<NoteVersionSnapshot, JsonError> decodedPiece(const QByteArray& piece)
{
    const auto value = parsed(piece, {});
    return value ? fromJson(*value) : std::unexpected(value.error());
}

QByteArray pieceOf(const NoteVersionSnapshot& version)
{
    // As an array has it, so that its lines are as deep as those of the versions beside it.
    const QByteArray text =
        QJsonDocument(QJsonArray{toJson(version)}).toJson(QJsonDocument::Indented);
    return text.sliced(arrayStart.size(), text.size() - arrayStart.size() - arrayEnd.size());
}

QByteArray timelineOf(const QByteArray& timeline, const QList<NoteVersionSummary>& staying,
                      QByteArrayView added)
{
    QByteArray text;
    text.reserve(timeline.size() + added.size() + 16);
    const auto append = [&](QByteArrayView piece) {
        text.append(text.isEmpty() ? arrayStart : separator).append(piece);
    };
    for (const NoteVersionSummary& each : staying)
        append(QByteArrayView(timeline).sliced(each.piece.at, each.piece.size));
    if (!added.isEmpty())
        append(added);
    return text.isEmpty() ? QByteArray("[\n]\n") : text.append(arrayEnd);
}

QList<NoteVersionSummary> thinned(const QList<NoteVersionSummary>& oldestFirst, Timestamp now)
{
    QList<NoteVersionSummary> staying;
    QSet<std::pair<int, qint64>> taken;
    for (qsizetype i = oldestFirst.size() - 1; i >= 0; --i) {
        const NoteVersionSummary& each = oldestFirst.at(i);
        const bool staysAnyway = each.label || i >= oldestFirst.size() - latestThatStay;
        const auto stretch = stretchOf(each.capturedAt, now);
        if (!staysAnyway && taken.contains(stretch))
            continue;
        if (!staysAnyway)
            taken.insert(stretch);
        staying.append(each);
    }
    std::ranges::reverse(staying);
    return staying;
}

} // namespace orvane::VersionTimeline
