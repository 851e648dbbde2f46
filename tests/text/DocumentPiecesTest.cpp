// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// Built twice: with the private headers of Qt and without.
#include "text/store/DocumentPieces.h"

#include <QSignalSpy>
#include <QTextDocument>
#include <gtest/gtest.h>

#include <random>

namespace orvane {
namespace {

using namespace Qt::StringLiterals;

constexpr char16_t separator = QChar::ParagraphSeparator;

QTextCharFormat charFormat(int number)
{
    QTextCharFormat format;
    format.setProperty(QTextFormat::UserProperty, number);
    return format;
}

QTextBlockFormat blockFormat(int number)
{
    QTextBlockFormat format;
    format.setProperty(QTextFormat::UserProperty, number);
    return format;
}

/// What the pieces should hold, character by character.
struct Model {
    QString text;
    QList<int> formats;
    QList<int> paragraphs{0};

    [[nodiscard]] int paragraphAt(qsizetype position) const
    {
        return int(text.first(position).count(QChar(separator)));
    }
    bool operator==(const Model&) const = default;
};

Model modelOf(const DocumentPieces& pieces)
{
    const DocumentPieces::Contents contents = pieces.contents();
    const auto number = [&](int format) {
        return contents.formats[std::size_t(format)].intProperty(QTextFormat::UserProperty);
    };
    Model model;
    model.paragraphs.clear();
    int length = -1; // the separator that closes the document
    for (const auto& paragraph : contents.paragraphs) {
        model.paragraphs.append(number(paragraph.format));
        length += paragraph.length;
    }
    for (const auto& piece : contents.pieces) {
        for (int i = 0; i < piece.length && model.text.size() < length; ++i) {
            model.text += contents.buffer.at(piece.bufferPosition + i);
            model.formats.append(number(piece.format));
        }
    }
    return model;
}

void expectReads(const DocumentPieces& pieces, const Model& model, TextRange range)
{
    EXPECT_EQ(pieces.text(range), model.text.sliced(range.location, range.length));
    QList<int> formats;
    qsizetype at = range.location;
    pieces.forEachFormat(range, [&](TextRange run, const QTextCharFormat& format) {
        EXPECT_EQ(run.location, at);
        at = run.end();
        formats.insert(formats.size(), run.length, format.intProperty(QTextFormat::UserProperty));
    });
    EXPECT_EQ(formats, model.formats.sliced(range.location, range.length));
    if (!range.isEmpty()) {
        EXPECT_EQ(pieces.formatAt(int(range.location)).intProperty(QTextFormat::UserProperty),
                  model.formats[range.location]);
    }
}

TEST(DocumentPieces, AfterRandomEditsTheyHoldWhatAModelHolds)
{
    std::mt19937 random(11);
    const auto upTo = [&](qsizetype most) {
        return qsizetype(random() % unsigned(most + 1));
    };
    QTextDocument document;
    DocumentPieces pieces(document);
    Model model;
    std::vector<Model> history{model};
    for (int step = 0; step < 400; ++step) {
        const qsizetype length = model.text.size();
        const qsizetype from = upTo(length);
        const TextRange range{from, upTo(std::min<qsizetype>(length - from, 9))};
        const int number = 1 + int(upTo(4));
        pieces.beginEdit();
        pieces.beginEdit();
        switch (upTo(4)) {
        case 0:
        case 1: {
            const QString text = u"banana \u2028\U0001f469"_s.first(1 + upTo(6));
            pieces.insert(int(from), text, pieces.numberOf(charFormat(number)));
            model.text.insert(from, text);
            model.formats.insert(from, text.size(), number);
            break;
        }
        case 2:
            pieces.insertSeparator(int(from), pieces.numberOf(blockFormat(number)),
                                   pieces.numberOf(charFormat(number)));
            model.paragraphs.insert(model.paragraphAt(from) + 1, number);
            model.text.insert(from, QChar(separator));
            model.formats.insert(from, number);
            break;
        case 3: {
            const QString text = model.text.sliced(range.location, range.length);
            if (range.isEmpty() || text.contains(QChar(separator)))
                break;
            pieces.remove(range);
            model.text.remove(range.location, range.length);
            model.formats.remove(range.location, range.length);
            break;
        }
        default:
            pieces.setCharFormat(range, charFormat(number));
            std::fill_n(model.formats.begin() + range.location, range.length, number);
            pieces.setBlockFormat(document.findBlock(int(from)), blockFormat(number));
            model.paragraphs[model.paragraphAt(from)] = number;
        }
        pieces.endEdit();
        pieces.endEdit();
        ASSERT_EQ(modelOf(pieces), model) << step;
        const qsizetype start = upTo(model.text.size());
        expectReads(pieces, model, {start, upTo(model.text.size() - start)});
        if (!(history.back() == model))
            history.push_back(model);
    }
    // Whatever happens within one edit is one step.
    while (document.isUndoAvailable()) {
        const Model now = modelOf(pieces);
        document.undo();
        if (modelOf(pieces) == now)
            continue; // a format that stood there already
        history.pop_back();
        ASSERT_FALSE(history.empty());
        ASSERT_EQ(modelOf(pieces), history.back());
    }
    EXPECT_EQ(modelOf(pieces), Model());
}

TEST(DocumentPieces, ParagraphsAreJoinedAndPartedWithTheirFormats)
{
    QTextDocument document;
    DocumentPieces pieces(document);
    const int plain = pieces.numberOf(charFormat(1));
    pieces.beginEdit();
    pieces.insert(0, u"onetwo"_s, plain);
    pieces.insertSeparator(3, pieces.numberOf(blockFormat(7)), pieces.numberOf(charFormat(2)));
    pieces.endEdit();
    EXPECT_EQ(pieces.text({0, 7}), u"one\u2029two"_s);
    EXPECT_EQ(modelOf(pieces).paragraphs, (QList<int>{0, 7}));
    EXPECT_EQ(pieces.formatAt(3).intProperty(QTextFormat::UserProperty), 2);
    pieces.remove({3, 1});
    EXPECT_EQ(pieces.text({0, 6}), u"onetwo"_s);
    EXPECT_EQ(document.blockCount(), 1);
}

} // namespace
} // namespace orvane
