// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "writing/StockMarkdown.h"

namespace orvane::bench {

using namespace Qt::StringLiterals;

StockMarkdown::StockMarkdown(QTextDocument* document)
    : QSyntaxHighlighter(document)
    , m_fence(u"^`{3,}"_s)
{
    QTextCharFormat heading;
    heading.setFontWeight(QFont::Bold);
    heading.setProperty(QTextFormat::FontSizeAdjustment, 2);
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    QTextCharFormat italic;
    italic.setFontItalic(true);
    QTextCharFormat struckOut;
    struckOut.setFontStrikeOut(true);
    m_code.setFontFamilies({u"JetBrains Mono"_s});
    m_code.setForeground(QColor(0xb3, 0x54, 0));
    QTextCharFormat link;
    link.setFontUnderline(true);
    link.setForeground(QColor(0x0b, 0x5f, 0xc4));
    QTextCharFormat dim;
    dim.setForeground(QColor(0, 0, 0, 110));
    const auto add = [this](const QString& pattern, int group, const QTextCharFormat& format) {
        m_rules.append({QRegularExpression(pattern, QRegularExpression::UseUnicodePropertiesOption),
                        group, format});
    };
    add(uR"(^(#{1,6})\s(.+)$)"_s, 0, heading);
    add(uR"((\*\*|__)(.+?)\1)"_s, 2, bold);
    add(uR"((?<!\*|\w)(\*|_)(?!\*|\s)(.+?)(?<!\*|\s)\1(?!\*|\w))"_s, 2, italic);
    add(uR"(~~(.+?)~~)"_s, 1, struckOut);
    add(uR"(`([^`\n]+?)`)"_s, 0, m_code);
    add(uR"(\[([^\]]+)\]\(([^)]+)\))"_s, 0, link);
    add(uR"(^(>\s?)(.*)$)"_s, 0, dim);
    add(uR"(^(\s*)([-*+])\s)"_s, 2, dim);
    add(uR"(^(\s*)(\d+\.)\s)"_s, 2, dim);
    add(uR"(^(\s*[-*+]\s)\[([ xX])\]\s)"_s, 2, link);
    add(uR"(^([-*_]){3,}\s*$)"_s, 0, dim);
}

void StockMarkdown::highlightBlock(const QString& text)
{
    const bool isFence = m_fence.match(text).hasMatch();
    const bool wasInside = previousBlockState() == 1;
    setCurrentBlockState(isFence != wasInside ? 1 : 0);
    if (isFence || wasInside) {
        setFormat(0, int(text.size()), m_code);
        return;
    }
    for (const Rule& rule : std::as_const(m_rules)) {
        auto matches = rule.pattern.globalMatch(text);
        while (matches.hasNext()) {
            const auto match = matches.next();
            QTextCharFormat format = rule.format;
            format.merge(this->format(int(match.capturedStart(rule.group))));
            setFormat(int(match.capturedStart(rule.group)), int(match.capturedLength(rule.group)),
                      format);
        }
    }
}

} // namespace orvane::bench
