// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QRegularExpression>
#include <QSyntaxHighlighter>

namespace orvane::bench {

/// The toolkit's own way to colour the same Markdown: every pattern over every line that it is
/// asked for, and the state of fences from line to line.
class StockMarkdown : public QSyntaxHighlighter {
public:
    explicit StockMarkdown(QTextDocument* document);

protected:
    void highlightBlock(const QString& text) override;

private:
    struct Rule {
        QRegularExpression pattern;
        int group;
        QTextCharFormat format;
    };
    QRegularExpression m_fence;
    QTextCharFormat m_code;
    QList<Rule> m_rules;
};

} // namespace orvane::bench
