// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/markdown/MarkdownSyntaxHighlighter.h"

#include "editor/markdown/MarkdownScanners.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace orvane::MarkdownSyntaxHighlighter {

namespace {

constexpr std::array<double, 7> headingScales{1.0, 1.8, 1.5, 1.3, 1.15, 1.05, 1.0};

/// Italics look for their end again from each delimiter, so a line with very many of them would
/// take long; it is left alone where delimiters × length comes to more than this.
constexpr qsizetype largestItalicSearch = 20'000'000;

/// A compiled pattern. All match within one line, but for white space that may be a line's end.
const QRegularExpression& compiled(const char16_t* pattern)
{
    static QHash<const char16_t*, QRegularExpression> known;
    auto found = known.find(pattern);
    if (found == known.end()) {
        QRegularExpression expression(QString::fromUtf16(pattern),
                                      QRegularExpression::UseUnicodePropertiesOption |
                                          QRegularExpression::MultilineOption);
        Q_ASSERT(expression.isValid());
        expression.optimize();
        found = known.insert(pattern, expression);
    }
    return *found;
}

constexpr char16_t headingPattern[] = uR"(^(#{1,6})\s(.+)$)";
constexpr char16_t boldPattern[] = uR"((\*\*|__)(.+?)\1)";
constexpr char16_t italicPattern[] = uR"((?<!\*|\w)(\*|_)(?!\*|\s)(.+?)(?<!\*|\s)\1(?!\*|\w))";
constexpr char16_t strikethroughPattern[] = uR"(~~(.+?)~~)";
constexpr char16_t inlineCodePattern[] = uR"(`([^`\n]+?)`)";
constexpr char16_t blockquotePattern[] = uR"(^(>\s?)(.*)$)";
constexpr char16_t unorderedListPattern[] = uR"(^(\s*)([-*+])\s)";
constexpr char16_t orderedListPattern[] = uR"(^(\s*)(\d+\.)\s)";
constexpr char16_t taskListPattern[] = uR"(^(\s*[-*+]\s)\[([ xX])\]\s)";
constexpr char16_t horizontalRulePattern[] = uR"(^([-*_]){3,}\s*$)";

/// Which patterns a line may match, told from its characters alone.
enum Sign : quint16 {
    maybeBold = 1,
    maybeItalic = 2,
    maybeStruckOut = 4,
    maybeCode = 8, // also a fence
    maybeLink = 16,
    maybeHeading = 32,
    maybeQuote = 64,
    maybeRule = 128,
    maybeBullet = 256,
    maybeTask = 512,
    maybeNumber = 1024
};

struct Line {
    qsizetype start = 0;
    qsizetype length = 0;     // without the line break
    qsizetype delimiters = 0; // asterisks and low lines
    quint16 signs = 0;
};

bool isDelimiter(QChar c)
{
    return c == u'*' || c == u'_';
}

quint16 inlineSigns(QStringView line, qsizetype& delimiters)
{
    qsizetype doubled = 0;
    qsizetype tildes = 0;
    qsizetype backticks = 0;
    quint16 signs = 0;
    QChar before;
    for (const QChar c : line) {
        if (c.unicode() > u'~') {
        } else if (isDelimiter(c)) {
            ++delimiters;
            doubled += c == before ? 1 : 0;
        } else if (c == u'~') {
            ++tildes;
        } else if (c == u'`') {
            ++backticks;
        } else if (c == u'[') {
            signs |= maybeLink;
        }
        before = c;
    }
    signs |= doubled >= 2 ? maybeBold : 0;
    signs |= delimiters >= 2 ? maybeItalic : 0;
    signs |= tildes >= 4 ? maybeStruckOut : 0;
    signs |= backticks >= 2 ? maybeCode : 0;
    return signs;
}

quint16 startSigns(QStringView line)
{
    if (line.isEmpty())
        return 0;
    quint16 signs = 0;
    const auto isRule = [](QChar c) {
        return c == u'-' || isDelimiter(c);
    };
    if (line[0] == u'#')
        signs |= maybeHeading;
    else if (line[0] == u'>')
        signs |= maybeQuote;
    else if (line.size() >= 3 && isRule(line[0]) && isRule(line[1]) && isRule(line[2]))
        signs |= maybeRule;
    const auto visible =
        std::find_if(line.begin(), line.end(), [](QChar c) { return !c.isSpace(); });
    if (visible == line.end())
        return signs;
    // The line break counts as a space, too.
    const bool isAlone = visible + 1 == line.end();
    const bool isBullet = *visible == u'-' || *visible == u'*' || *visible == u'+';
    if (isBullet && (isAlone || visible[1].isSpace()))
        signs |= isAlone || line.contains(u'[') ? maybeBullet | maybeTask : maybeBullet;
    else if (visible->isDigit() && line.contains(u'.'))
        signs |= maybeNumber;
    return signs;
}

/// One text being decorated.
class Painter {
public:
    Painter(QStringView text, std::span<MarkdownStyle> styles)
        : m_text(text)
        , m_styles(styles)
    {
        readLines();
        if (m_signs & maybeCode)
            m_fences = fencedBlocks(text);
    }

    void fences();
    void headings();
    void emphasis(const char16_t* pattern);
    void strikethrough();
    void inlineCode();
    void links();
    void blockquotes();
    void listMarkers(const char16_t* pattern, Sign sign);
    void taskBoxes();
    void rules();

private:
    void readLines();
    [[nodiscard]] bool isFenced(TextRange range) const;
    [[nodiscard]] QStringView withNextLine(const Line& line) const;

    /// Calls `visit(match, offset)` for matches at the start of lines that show `sign`.
    template <typename Visit>
    void atLineStarts(const char16_t* pattern, Sign sign, Visit&& visit);
    /// The same for all matches within lines that show `sign`. `mayBegin(rest)` tells cheaply
    /// whether there can be one more.
    template <typename MayBegin, typename Visit>
    void withinLines(const char16_t* pattern, Sign sign, MayBegin&& mayBegin, Visit&& visit);

    template <typename Change>
    void change(TextRange range, Change&& change)
    {
        const TextRange inside = range.clampedTo(m_text.size());
        for (MarkdownStyle& style :
             m_styles.subspan(std::size_t(inside.location), std::size_t(inside.length)))
            change(style);
    }
    void color(TextRange range, MarkdownColor color)
    {
        change(range, [color](MarkdownStyle& style) { style.color = color; });
    }
    static void setCode(MarkdownStyle& style)
    {
        style.headingLevel = 0;
        style.isBold = 0;
        style.isItalic = 0;
        style.isCode = 1;
        style.color = MarkdownColor::code;
    }

    QStringView m_text;
    std::span<MarkdownStyle> m_styles;
    QList<Line> m_lines; // those with signs
    QList<TextRange> m_fences;
    quint16 m_signs = 0; // of all lines
};

TextRange captured(const QRegularExpressionMatch& match, int group, qsizetype offset)
{
    return {offset + match.capturedStart(group), match.capturedLength(group)};
}

void Painter::readLines()
{
    for (qsizetype from = 0; from < m_text.size();) {
        const qsizetype newline = m_text.indexOf(u'\n', from);
        Line line;
        line.start = from;
        line.length = (newline < 0 ? m_text.size() : newline) - from;
        const QStringView characters = m_text.sliced(from, line.length);
        line.signs = inlineSigns(characters, line.delimiters) | startSigns(characters);
        if (line.signs)
            m_lines.append(line);
        m_signs |= line.signs;
        from += line.length + 1;
    }
}

bool Painter::isFenced(TextRange range) const
{
    const auto next = std::upper_bound(
        m_fences.begin(), m_fences.end(), range.location,
        [](qsizetype position, TextRange fence) { return position < fence.end(); });
    return next != m_fences.end() && next->location < range.end();
}

QStringView Painter::withNextLine(const Line& line) const
{
    const qsizetype lineEnd = line.start + line.length;
    const qsizetype nextEnd = lineEnd < m_text.size() ? m_text.indexOf(u'\n', lineEnd + 1) : -1;
    return m_text.sliced(line.start, (nextEnd < 0 ? m_text.size() : nextEnd) - line.start);
}

template <typename Visit>
void Painter::atLineStarts(const char16_t* pattern, Sign sign, Visit&& visit)
{
    if (!(m_signs & sign))
        return;
    const QRegularExpression& expression = compiled(pattern);
    qsizetype end = 0;
    for (const Line& line : std::as_const(m_lines)) {
        if (!(line.signs & sign) || line.start < end)
            continue;
        const auto match = expression.match(withNextLine(line), 0, QRegularExpression::NormalMatch,
                                            QRegularExpression::AnchorAtOffsetMatchOption);
        if (!match.hasMatch())
            continue;
        const TextRange whole = captured(match, 0, line.start);
        end = whole.end();
        if (!isFenced(whole))
            visit(match, line.start);
    }
}

template <typename MayBegin, typename Visit>
void Painter::withinLines(const char16_t* pattern, Sign sign, MayBegin&& mayBegin, Visit&& visit)
{
    if (!(m_signs & sign))
        return;
    const QRegularExpression& expression = compiled(pattern);
    for (const Line& line : std::as_const(m_lines)) {
        if (!(line.signs & sign))
            continue;
        if (pattern == italicPattern && line.delimiters * line.length > largestItalicSearch)
            continue;
        const QStringView characters = m_text.sliced(line.start, line.length);
        // Once for all matches, which would each check the whole line.
        if (!characters.isValidUtf16())
            continue;
        qsizetype from = 0;
        while (mayBegin(characters.sliced(from))) {
            const auto match =
                expression.match(characters, from, QRegularExpression::NormalMatch,
                                 QRegularExpression::DontCheckSubjectStringMatchOption);
            if (!match.hasMatch())
                break;
            from = match.capturedEnd();
            if (!isFenced(captured(match, 0, line.start)))
                visit(match, line.start);
        }
    }
}

void Painter::fences()
{
    for (const TextRange fence : std::as_const(m_fences))
        change(fence, setCode);
}

void Painter::headings()
{
    atLineStarts(headingPattern, maybeHeading, [this](const auto& match, qsizetype offset) {
        const auto level = quint8(std::min<qsizetype>(6, match.capturedLength(1)));
        change(captured(match, 0, offset), [level](MarkdownStyle& style) {
            style.headingLevel = level & 7;
            style.isBold = 0;
            style.isItalic = 0;
            style.isCode = 0;
            style.color = MarkdownColor::heading;
        });
        color(captured(match, 1, offset), MarkdownColor::punctuation);
    });
}

void Painter::emphasis(const char16_t* pattern)
{
    const bool isBold = pattern == boldPattern;
    const auto mayBegin = [isBold](QStringView rest) {
        const auto found = std::find_if(rest.begin(), rest.end(), [&](const QChar& c) {
            return isDelimiter(c) && (!isBold || (&c + 1 != rest.end() && *(&c + 1) == c));
        });
        return found != rest.end();
    };
    const Sign sign = isBold ? maybeBold : maybeItalic;
    withinLines(pattern, sign, mayBegin, [&](const auto& match, qsizetype offset) {
        const TextRange open = captured(match, 1, offset);
        const TextRange text = captured(match, 2, offset);
        change(text, [isBold](MarkdownStyle& style) {
            style.isBold |= isBold ? 1 : 0;
            style.isItalic |= isBold ? 0 : 1;
        });
        color(open, MarkdownColor::punctuation);
        color({text.end(), open.length}, MarkdownColor::punctuation);
    });
}

void Painter::strikethrough()
{
    const auto mayBegin = [](QStringView rest) {
        return rest.contains(u"~~");
    };
    withinLines(strikethroughPattern, maybeStruckOut, mayBegin,
                [this](const auto& match, qsizetype offset) {
                    const TextRange text = captured(match, 1, offset);
                    change(text, [](MarkdownStyle& style) { style.isStruckOut = 1; });
                    color({text.location - 2, 2}, MarkdownColor::punctuation);
                    color({text.end(), 2}, MarkdownColor::punctuation);
                });
}

void Painter::inlineCode()
{
    const auto mayBegin = [](QStringView rest) {
        return rest.contains(u'`');
    };
    withinLines(inlineCodePattern, maybeCode, mayBegin,
                [this](const auto& match, qsizetype offset) {
                    const TextRange whole = captured(match, 0, offset);
                    change(whole, setCode);
                    color({whole.location, 1}, MarkdownColor::punctuation);
                    color({whole.end() - 1, 1}, MarkdownColor::punctuation);
                });
}

void Painter::links()
{
    if (!(m_signs & maybeLink))
        return;
    for (const MarkdownLink& link : markdownLinks(m_text)) {
        if (isFenced(link.range()))
            continue;
        change(link.text(), [](MarkdownStyle& style) {
            style.isUnderlined = 1;
            style.color = MarkdownColor::link;
        });
        color(link.target(), MarkdownColor::linkTarget);
        color({link.textOpen, 1}, MarkdownColor::punctuation);
        color({link.textClose, 2}, MarkdownColor::punctuation);
        color({link.targetClose, 1}, MarkdownColor::punctuation);
    }
}

void Painter::blockquotes()
{
    atLineStarts(blockquotePattern, maybeQuote, [this](const auto& match, qsizetype offset) {
        color(captured(match, 0, offset), MarkdownColor::blockquote);
        color(captured(match, 1, offset), MarkdownColor::punctuation);
    });
}

void Painter::listMarkers(const char16_t* pattern, Sign sign)
{
    atLineStarts(pattern, sign, [this](const auto& match, qsizetype offset) {
        color(captured(match, 2, offset), MarkdownColor::listMarker);
    });
}

void Painter::taskBoxes()
{
    atLineStarts(taskListPattern, maybeTask, [this](const auto& match, qsizetype offset) {
        color({captured(match, 1, offset).end(), 3}, MarkdownColor::taskCheckbox);
    });
}

void Painter::rules()
{
    atLineStarts(horizontalRulePattern, maybeRule, [this](const auto& match, qsizetype offset) {
        color(captured(match, 0, offset), MarkdownColor::punctuation);
    });
}

} // namespace

double headingScale(int level)
{
    return headingScales[std::size_t(std::clamp(level, 0, 6))];
}

void resetToBase(std::span<MarkdownStyle> styles)
{
    for (MarkdownStyle& style : styles) {
        style.color = MarkdownColor::text;
        style.isStruckOut = 0;
    }
}

void applyAllPatterns(QStringView text, std::span<MarkdownStyle> styles)
{
    Q_ASSERT(std::size_t(text.size()) == styles.size());
    Painter painter(text, styles);
    painter.fences();
    painter.headings();
    painter.emphasis(boldPattern);
    painter.emphasis(italicPattern);
    painter.strikethrough();
    painter.inlineCode();
    painter.links();
    painter.blockquotes();
    painter.listMarkers(unorderedListPattern, maybeBullet);
    painter.listMarkers(orderedListPattern, maybeNumber);
    painter.taskBoxes();
    painter.rules();
}

} // namespace orvane::MarkdownSyntaxHighlighter
