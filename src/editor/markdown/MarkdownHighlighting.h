// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/markdown/MarkdownDecoration.h"
#include "editor/markdown/MarkdownSyntaxHighlighter.h"
#include "text/layout/ParagraphDecorator.h"
#include "text/value/TextFont.h"
#include "text/value/TextRange.h"
#include "text/value/TextSelection.h"

#include <QHash>
#include <QObject>

namespace orvane {

class EditGateway;
class EditorView;

/// Shows a text as Markdown in one view, whenever that shows it, while this lives. The text itself
/// has no attributes of it. Main thread.
class MarkdownHighlighting final : public QObject, public ParagraphDecorator {
    Q_OBJECT
public:
    /// Colours the whole text. View, gateway and store outlive it.
    MarkdownHighlighting(EditorView& view, EditGateway& gateway,
                         const MarkdownSyntaxHighlighter::Theme& theme, QObject* parent = nullptr);
    ~MarkdownHighlighting() override;

    void setTheme(const MarkdownSyntaxHighlighter::Theme& theme);

    /// The code in a paragraph, in positions of the text.
    [[nodiscard]] QList<TextRange> codeIn(const QTextBlock& block) const;

    [[nodiscard]] QList<QTextLayout::FormatRange> decorationOf(const QTextBlock& block, int from,
                                                               int to) const override;

private:
    void load();
    void onTextChanged(const TextChange& change);
    void tellLayout(TextRange changed);
    [[nodiscard]] const MarkdownSpans& spansOf(const QTextBlock& block) const;
    [[nodiscard]] QTextCharFormat formatFor(MarkdownStyle style) const;

    EditorView& m_view;
    EditGateway& m_gateway;
    MarkdownSyntaxHighlighter::Theme m_theme;
    QString m_codeFamily;
    MarkdownDecoration m_decoration;
    mutable QHash<quint16, QTextCharFormat> m_formats; // by the bits of a style
    mutable double m_formatsSize = 0;                  // of the base font that they are made for
};

/// The family for code: `wanted`, or else a monospaced one that this machine has.
[[nodiscard]] QString codeFontFamily(const QString& wanted);

} // namespace orvane
