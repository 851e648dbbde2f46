// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/lists/ListLines.h"

namespace orvane::ListContinuationHelper {

/// The numbers that the items of one list have reached, level by level.
class ListLines::Counters {
public:
    struct Level {
        int count = 0;
        EditorListStyle style = EditorListStyle::decimal;
    };

    void clear() { m_levels.clear(); }
    [[nodiscard]] std::optional<Level> at(int level) const
    {
        return std::size_t(level) < m_levels.size() ? std::optional(m_levels[std::size_t(level)])
                                                    : std::nullopt;
    }
    void passBullet(int level)
    {
        m_levels.resize(std::min(m_levels.size(), std::size_t(level) + 1));
    }
    /// The level of a numbered item, counted up; its style is still that of the item before.
    Level& count(int level)
    {
        m_levels.resize(std::size_t(level) + 1);
        ++m_levels.back().count;
        return m_levels.back();
    }

private:
    std::vector<Level> m_levels;
};

namespace {

bool continuesLetters(EditorListStyle style, QStringView letters, EditorListStyle before, int count)
{
    // A capital "M" alone reads as a lower Roman digit.
    const bool isCapital = !letters.isEmpty() && letters.front().isUpper();
    const bool isRoman =
        style == EditorListStyle::lowerRoman || style == EditorListStyle::upperRoman;
    const bool goesOn =
        isCapital ? before == EditorListStyle::upperAlpha : before == EditorListStyle::lowerAlpha;
    return count >= 2 && isRoman && goesOn && (letters.size() == 1 || count > 26);
}

/// Whether an item could not be counted so high in a list of `runLength` lines.
bool isBeyond(EditorListStyle style, QStringView letters, qsizetype runLength)
{
    constexpr qsizetype digitsOfAYear = 4;
    if (style == EditorListStyle::decimal)
        return letters.size() >= digitsOfAYear && letters.toULongLong() > qulonglong(runLength) + 1;
    const bool isRoman =
        style == EditorListStyle::lowerRoman || style == EditorListStyle::upperRoman;
    return (isRoman ? romanNumber(letters) : alphaNumber(letters)) > runLength + 1;
}

/// What stands between the tabs and the full stop of a numbered item.
QStringView lettersOf(const ListText& text, const ListLine& line)
{
    QStringView prefix = QStringView(text.text).sliced(line.range.location, line.prefixLength);
    while (prefix.startsWith(u'\t'))
        prefix = prefix.sliced(1);
    return prefix.chopped(2);
}

qsizetype countTabs(QStringView line)
{
    qsizetype tabs = 0;
    while (tabs < line.size() && line[tabs] == u'\t')
        ++tabs;
    return tabs;
}

void readPrefix(ListLine& line, const ListText& text, qsizetype tabs, const PrefixMatch& match)
{
    line.item = match.style;
    line.prefixLength = tabs + match.prefixLength;
    SharedParagraphStyle style;
    if (text.form == ListForm::rich && line.isWholeParagraph)
        style = text.paragraphStyleAt(line.range.location);
    line.level = listLevel(*style, tabs);
    line.isLabelled = !style->textLists.isEmpty();
}

QStringView contentOf(const ListText& text, const ListLine& line)
{
    return QStringView(text.text).sliced(line.range.location, line.range.length);
}

} // namespace

ListLine recognisedLine(const ListText& text, TextRange full)
{
    ListLine line;
    line.range = full;
    const QStringView all(text.text);
    const auto ends = [](QChar c) {
        return c == u'\n' || c == lineSeparator;
    };
    const bool endsSoftly = full.end() > full.location && all[full.end() - 1] == lineSeparator;
    const bool beginsSoftly = full.location > 0 && all[full.location - 1] == lineSeparator;
    line.isWholeParagraph = !endsSoftly && !beginsSoftly;
    if (full.length > 0 && ends(all[full.end() - 1]))
        --line.range.length;
    if (line.range.length > 0 && all[line.range.end() - 1] == u'\r')
        --line.range.length;

    const QStringView content = contentOf(text, line);
    const qsizetype tabs = countTabs(content);
    const auto match = matchedPrefix(content.sliced(tabs), text.bullets);
    if (!match)
        return line;
    readPrefix(line, text, tabs, *match);
    return line;
}

bool dependsOnLinesAbove(const ListText& text, const ListLine& line)
{
    if (line.isItem())
        return line.item == EditorListStyle::lowerRoman || line.item == EditorListStyle::upperRoman;
    const QStringView content = contentOf(text, line);
    return matchedLetters(content.sliced(countTabs(content))).has_value();
}

std::optional<PrefixMatch> matchOf(const ListText& text, const ListLine& line)
{
    const QStringView prefix =
        QStringView(text.text).sliced(line.range.location, line.prefixLength);
    return matchedPrefix(prefix.sliced(countTabs(prefix)), text.bullets);
}

ListLines::ListLines(const ListText& text)
    : m_text(text)
{
    const QStringView all(text.text);
    const bool hasSoftBreaks = all.contains(lineSeparator);
    qsizetype from = 0;
    for (;;) {
        qsizetype end = all.indexOf(u'\n', from);
        if (hasSoftBreaks) {
            const qsizetype stretchEnd = end < 0 ? all.size() : end;
            const qsizetype soft = all.sliced(from, stretchEnd - from).indexOf(lineSeparator);
            end = soft < 0 ? end : from + soft;
        }
        const qsizetype next = end < 0 ? all.size() : end + 1;
        m_lines.push_back(recognisedLine(text, TextRange::between(from, next)));
        if (end < 0)
            break;
        from = next;
    }
    resolveLetters();
}

qsizetype ListLines::indexAt(qsizetype position) const
{
    const auto found = std::upper_bound(
        m_lines.begin(), m_lines.end(), position,
        [](qsizetype wanted, const ListLine& line) { return wanted < line.range.location; });
    return std::max<qsizetype>(0, found - m_lines.begin() - 1);
}

ListLines::Span ListLines::touchedBy(TextRange range) const
{
    const qsizetype last = range.isEmpty() ? range.location : range.end() - 1;
    return {indexAt(range.location), indexAt(last) + 1};
}

ListLines::Change& ListLines::changeOf(qsizetype index)
{
    ListLine& line = at(index);
    if (line.change < 0) {
        line.change = int(m_changes.size());
        m_changes.emplace_back();
    }
    return m_changes[std::size_t(line.change)];
}

const ListLines::Change* ListLines::changeOf(const ListLine& line) const
{
    return line.change < 0 ? nullptr : &m_changes[std::size_t(line.change)];
}

void ListLines::setItem(qsizetype index, EditorListStyle style, int level, const QString& prefix)
{
    Change& change = changeOf(index);
    change.prefix = prefix;
    change.style = listParagraphStyle(style, level);
    at(index).item = style;
    at(index).level = level;
    at(index).isLabelled = true;
}

void ListLines::setPlain(qsizetype index)
{
    Change& change = changeOf(index);
    change.prefix = QString();
    at(index).item = std::nullopt;
    if (m_text.form == ListForm::rich)
        change.style = plainParagraphStyle(*m_text.paragraphStyleAt(at(index).range.location));
}

void ListLines::split(qsizetype index, qsizetype position, EditorListStyle style, int level,
                      const QString& prefix)
{
    ListLine next = at(index);
    next.range = TextRange::between(position, at(index).range.end());
    next.prefixLength = 0;
    next.change = -1;
    at(index).range = TextRange::between(at(index).range.location, position);
    changeOf(index);
    m_lines.insert(m_lines.begin() + index + 1, next);
    setItem(index + 1, style, level, prefix);
    changeOf(index + 1).beginsLine = true;
}

void ListLines::setMarkerColor(qsizetype index, const std::optional<RgbaColor>& color)
{
    changeOf(index).color = color;
}

void ListLines::touch(Span span)
{
    for (qsizetype i = span.first; i < span.end; ++i)
        changeOf(i);
}

bool ListLines::isTouched(qsizetype index) const
{
    if (index < 0 || index >= qsizetype(m_lines.size()))
        return false;
    const Change* change = changeOf(m_lines[std::size_t(index)]);
    return change && change->isTouched;
}

/// Whether a line merely looks like an item: a paragraph that begins with a year, an initial or a
/// word and a full stop.
bool ListLines::isProse(const ListLine& line, qsizetype runLength) const
{
    if (line.isLabelled || line.prefixLength == 0 || !isNumbered(*line.item))
        return false;
    return isBeyond(*line.item, lettersOf(m_text, line), runLength);
}

qsizetype ListLines::runEnd(qsizetype first) const
{
    qsizetype end = first;
    while (end < qsizetype(m_lines.size()) && m_lines[std::size_t(end)].isItem())
        ++end;
    return end;
}

bool ListLines::isProseAt(qsizetype index) const
{
    const bool followsItem = index > 0 && (*this)[index - 1].isItem();
    return !followsItem && isProse((*this)[index], runEnd(index) - index);
}

/// Makes a line with several lower letters an item, where a list has come that far.
void ListLines::readLetters(ListLine& line, const Counters& counters) const
{
    constexpr int uncounted = 3; // items may have gone since the list was counted
    const QStringView content = contentOf(m_text, line);
    const qsizetype tabs = countTabs(content);
    const auto match = matchedLetters(content.sliced(tabs));
    if (!match)
        return;
    ListLine item = line;
    readPrefix(item, m_text, tabs, *match);
    const auto level = counters.at(item.level);
    if (level && level->style == EditorListStyle::lowerAlpha && level->count + uncounted > 26 &&
        alphaNumber(lettersOf(m_text, item)) <= level->count + uncounted)
        line = item;
}

void ListLines::resolveLetters()
{
    Counters counters;
    for (ListLine& line : m_lines) {
        if (!line.isItem())
            readLetters(line, counters);
        if (!line.isItem()) {
            counters.clear();
        } else if (!isNumbered(*line.item)) {
            counters.passBullet(line.level);
        } else {
            Counters::Level& level = counters.count(line.level);
            if (continuesLetters(*line.item, lettersOf(m_text, line), level.style, level.count))
                line.item = level.style;
            level.style = *line.item;
        }
    }
}

void ListLines::renumber()
{
    for (qsizetype first = 0; first < qsizetype(m_lines.size());) {
        const qsizetype end = runEnd(first);
        if (end > first)
            renumberRun(first, end);
        first = end + 1;
    }
}

void ListLines::renumberRun(qsizetype first, qsizetype end)
{
    bool isReached = false;
    for (qsizetype i = first - 1; i <= end && !isReached; ++i)
        isReached = isTouched(i);

    Counters counters;
    for (qsizetype i = first; i < end; ++i) {
        const ListLine line = at(i);
        if (isProse(line, end - first))
            continue;
        if (!isNumbered(*line.item)) {
            counters.passBullet(line.level);
            continue;
        }
        const int number = counters.count(line.level).count;
        if (!isReached && !line.isLabelled)
            continue;
        const QString prefix = markerPrefix(*line.item, line.level, number);
        const bool wasTouched = line.change >= 0;
        const QStringView standing =
            QStringView(m_text.text).sliced(line.range.location, line.prefixLength);
        if (!wasTouched && standing == prefix)
            continue;
        Change& change = changeOf(i);
        change.prefix = prefix;
        change.isTouched = wasTouched;
    }
}

TextEdits ListLines::edits(const QString& name) const
{
    TextEdits edits;
    edits.name = name;
    qsizetype shift = 0;
    for (const ListLine& line : m_lines) {
        const Change* change = changeOf(line);
        if (!change)
            continue;
        const qsizetype countBefore = edits.replacements.size();
        if (change->beginsLine) {
            const bool isInCell = m_text.form == ListForm::rich &&
                                  m_text.paragraphStyleAt(line.range.location)->cell.has_value();
            const QChar separator = isInCell || !line.isWholeParagraph ? lineSeparator : u'\n';
            edits.replacements.append(
                {{line.range.location, 0}, separator + *change->prefix, std::nullopt});
        } else if (change->prefix) {
            const QStringView before =
                QStringView(m_text.text).sliced(line.range.location, line.prefixLength);
            appendDifference(edits.replacements, line.range.location, before, *change->prefix,
                             styleSource(line));
        }
        appendStyle(edits, line, *change,
                    line.range.location + shift + (change->beginsLine ? 1 : 0));
        for (qsizetype i = countBefore; i < edits.replacements.size(); ++i)
            shift += edits.replacements[i].text.size() - edits.replacements[i].range.length;
    }
    return edits;
}

std::optional<qsizetype> ListLines::styleSource(const ListLine& line) const
{
    if (line.prefixLength > 0)
        return line.contentStart() - 1;
    if (!line.range.isEmpty())
        return line.range.location;
    return std::nullopt;
}

void ListLines::appendStyle(TextEdits& edits, const ListLine& line, const Change& change,
                            qsizetype start) const
{
    if (m_text.form == ListForm::plain)
        return;
    if (change.style && line.isWholeParagraph) {
        const SharedParagraphStyle before = m_text.paragraphStyleAt(line.range.location);
        ParagraphStyle style = **change.style;
        style.cell = before->cell;
        const bool splitsCell = change.beginsLine && before->cell.has_value();
        if (!splitsCell && style != *before)
            edits.restylings.append({start, style});
    }
    if (change.color && change.prefix && change.prefix->size() > 1) {
        const qsizetype tabs = countTabs(*change.prefix);
        edits.recolorings.append({{start + tabs, change.prefix->size() - tabs - 1}, *change.color});
    }
}

} // namespace orvane::ListContinuationHelper
