// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/EditorSamples.h"

#include <QTextCursor>
#include <QTextTable>

#include <array>
#include <random>

namespace orvane::bench {

using namespace Qt::StringLiterals;

namespace {

constexpr double bodySize = 16;
constexpr double headingSize = 24;

class Writer {
public:
    [[nodiscard]] int below(int n) { return int(m_random() % unsigned(n)); }

    [[nodiscard]] QString words(int count)
    {
        static const QStringList vocabulary =
            u"the of and harbour ledger a in that tide to she was flood it had with water for "
            "under line stood on never written pressed kept hand year what he between table noon "
            "figures post at dry sixty one turned week should four where name seen down twice"_s
                .split(u' ');
        QString text;
        for (int i = 0; i < count; ++i) {
            text += vocabulary[below(int(vocabulary.size()))];
            text += u' ';
        }
        return text;
    }

private:
    std::mt19937 m_random{7};
};

CharacterStyle styled(double size, int weight, bool italic)
{
    CharacterStyle style;
    style.font = TextFont{u"Inter"_s, size, weight, italic};
    return style;
}

std::array<SharedCharacterStyle, 6> bodyStyles()
{
    CharacterStyle highlighted = styled(bodySize, 400, false);
    highlighted.background = RgbaColor{1, 0.9, 0.3, 0.4};
    CharacterStyle underlined = styled(bodySize, 400, false);
    underlined.underline = TextLine::single;
    CharacterStyle colored = styled(bodySize, 400, false);
    colored.foreground = RgbaColor{0.7, 0.1, 0.1, 1};
    return {styled(bodySize, 400, false),
            styled(bodySize, 700, false),
            styled(bodySize, 400, true),
            highlighted,
            underlined,
            colored};
}

QTextCharFormat stockFormat(const CharacterStyle& style)
{
    QTextCharFormat format;
    if (style.font) {
        QFont font = style.font->toQFont();
        font.setPixelSize(int(style.font->size * usualZoom));
        format.setFont(font);
    }
    if (style.foreground)
        format.setForeground(style.foreground->toQColor());
    if (style.background)
        format.setBackground(style.background->toQColor());
    format.setFontUnderline(style.underline != TextLine::none);
    return format;
}

} // namespace

AttributedString sampleText(int words)
{
    Writer writer;
    const auto styles = bodyStyles();
    const SharedCharacterStyle heading = styled(headingSize, 700, false);
    ParagraphStyle body;
    body.spacingAfter = 8;
    const SharedParagraphStyle bodyParagraph = body;
    AttributedString text;
    int written = 0;
    for (int paragraph = 0; written < words; ++paragraph) {
        if (paragraph % 20 == 0) {
            text.append(writer.words(4) + u'\n', heading, bodyParagraph);
            written += 4;
        }
        int left = std::min(40 + writer.below(80), words - written);
        written += left;
        while (left > 0) {
            const int count = std::min(left, 6 + writer.below(12));
            const auto& style = writer.below(2) ? styles[0] : styles[std::size_t(writer.below(6))];
            text.append(writer.words(count), style, bodyParagraph);
            left -= count;
        }
        text.append(u"\n", styles[0], bodyParagraph);
    }
    return text;
}

AttributedString sampleParagraph(int words)
{
    Writer writer;
    const auto styles = bodyStyles();
    AttributedString text;
    for (int left = words; left > 0;) {
        const int count = std::min(left, 6 + writer.below(12));
        const auto& style = writer.below(2) ? styles[0] : styles[std::size_t(writer.below(6))];
        text.append(writer.words(count), style, {});
        left -= count;
    }
    return text;
}

QString sampleWord(int letters)
{
    Writer writer;
    QString word;
    while (word.size() < letters)
        word += writer.words(100).remove(u' ');
    return word.first(letters);
}

AttributedString sampleTable(int rows, int columns)
{
    Writer writer;
    const QUuid id = QUuid::createUuid();
    const SharedCharacterStyle style = styled(13, 400, false);
    AttributedString text(u"before\n"_s, style);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            TableCellBlock cell;
            cell.table.id = id;
            cell.table.columns = columns;
            cell.row = row;
            cell.column = column;
            CellLook look;
            look.padding.fill(6);
            look.borderWidth.fill(0.5);
            look.borderColor.fill(RgbaColor{0.5, 0.5, 0.5, 1});
            cell.look = look;
            ParagraphStyle paragraph;
            paragraph.cell = cell;
            text.append(writer.words(3) + u'\n', style, paragraph);
        }
    }
    text.append(u"after"_s, style);
    return text;
}

std::unique_ptr<QTextDocument> stockDocument(const AttributedString& text)
{
    auto document = std::make_unique<QTextDocument>();
    document->setUndoRedoEnabled(false);
    QTextCursor cursor(document.get());
    cursor.beginEditBlock();
    text.forEachCharacterRun(
        text.fullRange(), [&](TextRange run, const SharedCharacterStyle& style) {
            cursor.insertText(text.text().sliced(run.location, run.length), stockFormat(*style));
        });
    cursor.endEditBlock();
    document->setUndoRedoEnabled(true);
    return document;
}

std::unique_ptr<QTextDocument> stockTable(int rows, int columns)
{
    Writer writer;
    auto document = std::make_unique<QTextDocument>();
    QTextCursor cursor(document.get());
    cursor.insertText(u"before"_s);
    QTextTable* table = cursor.insertTable(rows, columns);
    const QTextCharFormat format = stockFormat(styled(13, 400, false));
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            table->cellAt(row, column).firstCursorPosition().insertText(writer.words(3), format);
        }
    }
    return document;
}

} // namespace orvane::bench
