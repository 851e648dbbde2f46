// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/markdown/MarkdownHighlighting.h"

#include "editor/view/EditorView.h"
#include "text/layout/ParagraphLayout.h"
#include "text/store/EditGateway.h"
#include "text/store/TextStore.h"

#include <QFontDatabase>

#include <bit>

namespace orvane {

MarkdownHighlighting::MarkdownHighlighting(EditorView& view, EditGateway& gateway,
                                           const MarkdownSyntaxHighlighter::Theme& theme,
                                           QObject* parent)
    : QObject(parent)
    , m_view(view)
    , m_gateway(gateway)
    , m_theme(theme)
    , m_codeFamily(codeFontFamily(theme.codeFontName))
{
    m_decoration.load(m_gateway.store().text());
    m_view.setDecorator(m_gateway, this);
    connect(&m_gateway, &EditGateway::textChanged, this, &MarkdownHighlighting::onTextChanged);
}

MarkdownHighlighting::~MarkdownHighlighting()
{
    m_view.setDecorator(m_gateway, nullptr);
}

void MarkdownHighlighting::setTheme(const MarkdownSyntaxHighlighter::Theme& theme)
{
    if (theme == m_theme)
        return;
    m_theme = theme;
    m_codeFamily = codeFontFamily(theme.codeFontName);
    m_formats.clear();
    tellLayout(m_gateway.store().fullRange());
}

void MarkdownHighlighting::load()
{
    m_decoration.load(m_gateway.store().text());
    tellLayout(m_gateway.store().fullRange());
}

void MarkdownHighlighting::tellLayout(TextRange changed)
{
    if (&m_view.gateway() == &m_gateway)
        m_view.layout().decorationChanged(changed);
}

void MarkdownHighlighting::onTextChanged(const TextChange& change)
{
    const TextStore& store = m_gateway.store();
    if (change.location == 0 && change.lengthAfter == store.length()) {
        load();
        return;
    }
    const QTextBlock first = store.blockAt(change.location);
    const QTextBlock last = store.blockAt(change.location + change.lengthAfter);
    MarkdownChange lines;
    lines.firstLine = first.blockNumber();
    lines.linesAfter = last.blockNumber() - first.blockNumber() + 1;
    lines.linesBefore = lines.linesAfter - (store.paragraphCount() - m_decoration.lineCount());
    lines.offset = change.location - first.position();
    lines.lengthBefore = change.lengthBefore;
    lines.lengthAfter = change.lengthAfter;

    const LineSpan near = m_decoration.neighbourhood(lines);
    const auto blockAt = [&](qsizetype line) {
        return store.document().findBlockByNumber(int(line));
    };
    const QTextBlock end = blockAt(near.first + near.count - 1);
    const TextRange range =
        TextRange::between(blockAt(near.first).position(),
                           std::min<qsizetype>(end.position() + end.length(), store.length()));
    const LineSpan changed = m_decoration.update(lines, store.text(range));
    const QTextBlock lastChanged = blockAt(changed.first + changed.count - 1);
    tellLayout(TextRange::between(blockAt(changed.first).position(),
                                  lastChanged.position() + lastChanged.length() - 1));
}

const MarkdownSpans& MarkdownHighlighting::spansOf(const QTextBlock& block) const
{
    static const MarkdownSpans none;
    const int line = block.blockNumber();
    // The layout may ask between a change and the news of it.
    return line < m_decoration.lineCount() ? m_decoration.spans(line) : none;
}

QList<TextRange> MarkdownHighlighting::codeIn(const QTextBlock& block) const
{
    QList<TextRange> code;
    for (const MarkdownSpan& span : spansOf(block)) {
        const qsizetype start = block.position() + span.start;
        if (span.style.isCode && !code.isEmpty() && code.last().end() == start)
            code.last().length += span.length;
        else if (span.style.isCode)
            code.append({start, span.length});
    }
    return code;
}

QList<QTextLayout::FormatRange> MarkdownHighlighting::decorationOf(const QTextBlock& block,
                                                                   int from, int to) const
{
    const double size = m_view.layout().baseFont().size;
    if (size != m_formatsSize) {
        m_formats.clear();
        m_formatsSize = size;
    }
    QList<QTextLayout::FormatRange> formats;
    const MarkdownSpans& spans = spansOf(block);
    auto span = std::lower_bound(spans.begin(), spans.end(), from, [](const auto& one, int at) {
        return one.start + one.length <= at;
    });
    for (; span != spans.end() && span->start < to; ++span) {
        const int start = std::max(span->start, from);
        const int end = std::min(span->start + span->length, to);
        const auto key = std::bit_cast<quint16>(span->style);
        auto known = m_formats.constFind(key);
        if (known == m_formats.constEnd())
            known = m_formats.insert(key, formatFor(span->style));
        formats.append({start, end - start, *known});
    }
    return formats;
}

QTextCharFormat MarkdownHighlighting::formatFor(MarkdownStyle style) const
{
    QTextCharFormat format;
    if (style.color != MarkdownColor::text)
        format.setForeground(m_theme.colorOf(style.color, QColor()));
    if (style.headingLevel)
        setFontSize(format,
                    m_formatsSize * MarkdownSyntaxHighlighter::headingScale(style.headingLevel));
    if (style.headingLevel || style.isBold)
        format.setFontWeight(QFont::Bold);
    if (style.isItalic)
        format.setFontItalic(true);
    if (style.isCode)
        format.setFontFamilies({m_codeFamily});
    if (style.isUnderlined)
        format.setFontUnderline(true);
    if (style.isStruckOut)
        format.setFontStrikeOut(true);
    return format;
}

QString codeFontFamily(const QString& wanted)
{
    for (const QString& family : {wanted, QStringLiteral("JetBrains Mono")}) {
        if (QFontDatabase::hasFamily(family))
            return family;
    }
    return QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
}

} // namespace orvane
