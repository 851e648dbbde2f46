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

/// What a line holds that a pattern could begin with.
enum Sign : quint16 {
    starOrLine = 1,  // anywhere
    tilde = 2,       // anywhere
    backtick = 4,    // anywhere
    bracket = 8,     // anywhere
    hashFirst = 16,  // at the start
    angleFirst = 32, // at the start
    ruleFirst = 64,  // at the start
    itemFirst = 128, // after blanks: a bullet of a list
    digitFirst = 256 // after blanks
};

struct Line {
    qsizetype start = 0;
    qsizetype length = 0; // without the line break
    qsizetype stars = 0;  // how many asterisks and low lines
    quint16 signs = 0;
};

quint16 signsOf(QStringView line, qsizetype& stars)
{
    if (line.isEmpty())
        return 0;
    quint16 signs = 0;
    for (const QChar c : line) {
        switch (c.unicode()) {
        case u'*':
        case u'_':
            signs |= starOrLine;
            ++stars;
            break;
        case u'~':
            signs |= tilde;
            break;
        case u'`':
            signs |= backtick;
            break;
        case u'[':
            signs |= bracket;
            break;
        default:
            break;
        }
    }
    const QChar first = line[0];
    if (first == u'#')
        signs |= hashFirst;
    else if (first == u'>')
        signs |= angleFirst;
    else if (first == u'-' || first == u'*' || first == u'_')
        signs |= ruleFirst;
    const auto visible =
        std::find_if(line.begin(), line.end(), [](QChar c) { return !c.isSpace(); });
    if (visible == line.end())
        return signs;
    if (*visible == u'-' || *visible == u'*' || *visible == u'+')
        signs |= itemFirst;
    else if (visible->isDigit())
        signs |= digitFirst;
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
        if (m_signs & backtick)
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
    /// The same for all matches within lines that show `sign`.
    template <typename Visit>
    void withinLines(const char16_t* pattern, Sign sign, Visit&& visit);

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
        line.signs = signsOf(m_text.sliced(from, line.length), line.stars);
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

template <typename Visit>
void Painter::withinLines(const char16_t* pattern, Sign sign, Visit&& visit)
{
    if (!(m_signs & sign))
        return;
    const QRegularExpression& expression = compiled(pattern);
    for (const Line& line : std::as_const(m_lines)) {
        if (!(line.signs & sign))
            continue;
        if (pattern == italicPattern && line.stars * line.length > largestItalicSearch)
            continue;
        auto matches = expression.globalMatch(m_text.sliced(line.start, line.length));
        while (matches.hasNext()) {
            const auto match = matches.next();
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
    atLineStarts(headingPattern, hashFirst, [this](const auto& match, qsizetype offset) {
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
    withinLines(pattern, starOrLine, [&](const auto& match, qsizetype offset) {
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
    withinLines(strikethroughPattern, tilde, [this](const auto& match, qsizetype offset) {
        const TextRange text = captured(match, 1, offset);
        change(text, [](MarkdownStyle& style) { style.isStruckOut = 1; });
        color({text.location - 2, 2}, MarkdownColor::punctuation);
        color({text.end(), 2}, MarkdownColor::punctuation);
    });
}

void Painter::inlineCode()
{
    withinLines(inlineCodePattern, backtick, [this](const auto& match, qsizetype offset) {
        const TextRange whole = captured(match, 0, offset);
        change(whole, setCode);
        color({whole.location, 1}, MarkdownColor::punctuation);
        color({whole.end() - 1, 1}, MarkdownColor::punctuation);
    });
}

void Painter::links()
{
    if (!(m_signs & bracket))
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
    atLineStarts(blockquotePattern, angleFirst, [this](const auto& match, qsizetype offset) {
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
    atLineStarts(taskListPattern, itemFirst, [this](const auto& match, qsizetype offset) {
        color({captured(match, 1, offset).end(), 3}, MarkdownColor::taskCheckbox);
    });
}

void Painter::rules()
{
    atLineStarts(horizontalRulePattern, ruleFirst, [this](const auto& match, qsizetype offset) {
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
    painter.listMarkers(unorderedListPattern, itemFirst);
    painter.listMarkers(orderedListPattern, digitFirst);
    painter.taskBoxes();
    painter.rules();
}

} // namespace orvane::MarkdownSyntaxHighlighter
