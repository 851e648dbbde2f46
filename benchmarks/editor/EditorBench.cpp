// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/AppearanceTokens.h"
#include "appearance/Look.h"
#include "editor/EditorSamples.h"
#include "editor/tables/ColumnDrag.h"
#include "editor/tables/TableText.h"
#include "editor/view/EditorView.h"
#include "support/Bench.h"
#include "support/PaintedFrames.h"
#include "text/layout/ParagraphLayout.h"
#include "text/store/TextStore.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPaintEvent>
#include <QScrollBar>
#include <QTextEdit>
#include <QTextTable>
#include <QVBoxLayout>

#include <cstring>
#include <malloc.h>
#include <memory>

namespace orvane::bench {

using namespace Qt::StringLiterals;

namespace {

constexpr int million = 1'000'000;
constexpr QSize windowSize(900, 800);

struct Ours {
    TextStore store;
    EditGateway gateway{store};
    EditorView view;
    PaintedFrames frames{view.viewport()};

    explicit Ours(const AttributedString& text)
    {
        gateway.load(text, {});
        view.setBaseFont({u"Inter"_s, 16});
        view.setZoom(usualZoom);
        view.resize(windowSize);
        view.setGateway(&gateway);
        show();
    }
    ~Ours() { view.setGateway(nullptr); }

    void show()
    {
        view.show();
        QApplication::setActiveWindow(&view);
        view.setFocus();
        settle();
    }
    void goTo(qsizetype position)
    {
        view.setSelection(TextSelection::caret(position));
        view.ensureCaretVisible();
        settle();
    }
    void goToMiddle() { goTo(store.paragraphRange(store.length() / 2).location + 20); }
    double key(int code, const QString& text)
    {
        return frames.until([&] { pressKey(view, code, text); });
    }
};

struct Stock {
    std::unique_ptr<QTextDocument> document;
    QTextEdit edit;
    PaintedFrames frames{edit.viewport()};

    explicit Stock(std::unique_ptr<QTextDocument> text)
        : document(std::move(text))
    {
        edit.resize(windowSize);
        edit.setDocument(document.get());
        edit.show();
        QApplication::setActiveWindow(&edit);
        edit.setFocus();
        finishLayout();
    }
    /// Does at once what would otherwise be laid out bit by bit, in the time of others.
    void finishLayout()
    {
        static_cast<void>(document->pageCount());
        settle();
    }
    void goTo(int position)
    {
        QTextCursor cursor(document.get());
        cursor.setPosition(position);
        edit.setTextCursor(cursor);
        edit.ensureCursorVisible();
        settle();
    }
    void goToMiddle() { goTo(document->findBlock(document->characterCount() / 2).position() + 20); }
    double key(int code, const QString& text)
    {
        return frames.until([&] { pressKey(edit, code, text); });
    }
};

/// The large notes are made once for all rows that only type in them.
struct LargeNotes {
    AttributedString text = sampleText(million);
    Ours ours{text};
    Stock stock{stockDocument(text)};

    static LargeNotes& shared()
    {
        static auto* notes = new LargeNotes;
        return *notes;
    }
};

/// Types one key of words of six letters, as a person would; one endless word is nobody's text.
template <typename View>
double typeNext(View& view, int& typed)
{
    const bool isSpace = ++typed % 7 == 0;
    return isSpace ? view.key(Qt::Key_Space, u" "_s) : view.key(Qt::Key_X, u"x"_s);
}

Measurement keyMillion(double rank, int rounds)
{
    LargeNotes& notes = LargeNotes::shared();
    notes.ours.goToMiddle();
    notes.stock.goToMiddle();
    int ours = 0;
    int stock = 0;
    return interleave(
        rounds, [&] { return typeNext(notes.ours, ours); },
        [&] { return typeNext(notes.stock, stock); }, rank);
}

Measurement keyFlat()
{
    // Both untouched: what other rows have typed would make the paragraph of one of them longer.
    Ours large(sampleText(million));
    large.goToMiddle();
    Ours small(sampleText(10'000));
    small.goToMiddle();
    int inLarge = 0;
    int inSmall = 0;
    return interleave(
        150, [&] { return typeNext(large, inLarge); }, [&] { return typeNext(small, inSmall); });
}

/// A key in the middle of one paragraph of `text`, against one in many words in paragraphs.
Measurement keyLong(const AttributedString& text)
{
    LargeNotes& notes = LargeNotes::shared();
    notes.ours.goToMiddle();
    Ours longOne(text);
    longOne.goTo(text.length() / 2);
    int inLong = 0;
    int inMany = 0;
    return interleave(
        60, [&] { return typeNext(longOne, inLong); },
        [&] { return typeNext(notes.ours, inMany); });
}

/// A key with a second layout of the text at another width, which lays the paragraph out too,
/// against a key without one.
Measurement twoLayouts()
{
    const AttributedString text = sampleText(100'000);
    Ours once(text);
    Ours twice(text);
    once.goToMiddle();
    twice.goToMiddle();
    ParagraphLayout second(twice.store, 300, {u"Inter"_s, 16}, {});
    int inTwice = 0;
    int inOnce = 0;
    return interleave(
        100,
        [&] {
            const bool isSpace = ++inTwice % 7 == 0;
            return twice.frames.until([&] {
                pressKey(twice.view, isSpace ? Qt::Key_Space : Qt::Key_X,
                         isSpace ? u" "_s : u"x"_s);
                second.ensureLaidOut(twice.store.blockAt(twice.view.selection().position));
            });
        },
        [&] { return typeNext(once, inOnce); });
}

Measurement returnKey()
{
    LargeNotes& notes = LargeNotes::shared();
    notes.ours.goToMiddle();
    notes.stock.goToMiddle();
    return interleave(
        30, [&] { return notes.ours.key(Qt::Key_Return, u"\r"_s); },
        [&] { return notes.stock.key(Qt::Key_Return, u"\r"_s); });
}

QTextTable* tableOf(const Stock& stock)
{
    for (QTextFrame* frame : stock.document->rootFrame()->childFrames()) {
        if (auto* table = qobject_cast<QTextTable*>(frame))
            return table;
    }
    qFatal("no table");
}

Measurement keyTable()
{
    constexpr int rows = 200;
    constexpr int columns = 6;
    Ours ours(sampleTable(rows, columns));
    Stock stock(stockTable(rows, columns));
    ours.goToMiddle();
    QTextTable* table = tableOf(stock);
    stock.goTo(table->cellAt(rows / 2, columns / 2).firstPosition() + 2);
    return interleave(
        40, [&] { return ours.key(Qt::Key_X, u"x"_s); },
        [&] { return stock.key(Qt::Key_X, u"x"_s); });
}

Measurement insertTableRow()
{
    constexpr int rows = 500;
    constexpr int columns = 6;
    Ours ours(sampleTable(rows, columns));
    Stock stock(stockTable(rows, columns));
    ours.goToMiddle();
    QTextTable* table = tableOf(stock);
    stock.goTo(table->cellAt(rows / 2, columns / 2).firstPosition() + 2);
    return interleave(
        20,
        [&] {
            return ours.frames.until([&] {
                (void)TableEngine::insertRow(ours.gateway, ours.view.selection().position,
                                             TableSide::after, {});
            });
        },
        [&] { return stock.frames.until([&] { table->insertRows(rows / 2 + 1, 1); }); });
}

Measurement pasteCells()
{
    constexpr int rows = 5'000;
    constexpr int columns = 6;
    const QString word = u"low water"_s;
    QMimeData copied;
    QString lines;
    for (int row = 0; row < rows; ++row)
        lines += (word + u'\t').repeated(columns - 1) + word + u'\n';
    copied.setText(lines);
    const AttributedString small = sampleTable(1, 1);
    Ours ours(small);
    Stock stock(std::make_unique<QTextDocument>());
    return interleave(
        3,
        [&] {
            ours.gateway.load(small, {});
            ours.goTo(small.text().indexOf(u'\n') + 1);
            return ours.frames.until([&] {
                (void)TableEngine::fillCells(ours.gateway, ours.view.selection().position,
                                             cellsIn(copied), u"Paste"_s, {});
            });
        },
        [&] {
            stock.document->clear();
            settle();
            return stock.frames.until([&] {
                QTextCursor cursor(stock.document.get());
                cursor.beginEditBlock();
                QTextTable* table = cursor.insertTable(rows, columns);
                for (int row = 0; row < rows; ++row) {
                    for (int column = 0; column < columns; ++column)
                        table->cellAt(row, column).firstCursorPosition().insertText(word);
                }
                cursor.endEditBlock();
            });
        });
}

Measurement dragColumn()
{
    constexpr int rows = 500;
    constexpr int columns = 6;
    Look look(signatureDarkTokens());
    Ours ours(sampleTable(rows, columns));
    ColumnDrag drag(ours.view, look);
    ours.goToMiddle();
    const QRectF cell =
        ours.view.layout().cellRect(ours.store.blockAt(ours.view.selection().position));
    const auto at = [&](double offset) {
        return EditorMouse{
            {cell.right() + offset, cell.center().y()}, Qt::LeftButton, Qt::NoModifier, 1};
    };
    if (!drag.mousePressed(at(0)))
        qFatal("no border here");
    int step = 0;
    const Measurement measured = interleave(
        40,
        [&] { return ours.frames.until([&] { drag.mouseMoved(at(double(++step % 40) - 20)); }); },
        [&] { return ours.frames.until([&] { ours.view.viewport()->update(); }); });
    drag.mouseReleased(at(0));
    return measured;
}

Measurement open()
{
    const AttributedString text = sampleText(million);
    Ours ours{AttributedString()};
    Stock stock(std::make_unique<QTextDocument>());
    return interleave(
        5,
        [&] {
            auto store = std::make_unique<TextStore>();
            EditGateway gateway(*store);
            gateway.load(text, {});
            const double time = ours.frames.until([&] { ours.view.setGateway(&gateway); });
            ours.view.setGateway(&ours.gateway);
            return time;
        },
        [&] {
            auto document = stockDocument(text);
            const double time = stock.frames.until([&] { stock.edit.setDocument(document.get()); });
            stock.edit.setDocument(stock.document.get());
            return time;
        });
}

Measurement resize()
{
    LargeNotes& notes = LargeNotes::shared();
    notes.ours.goToMiddle();
    notes.stock.goToMiddle();
    int turn = 0;
    const auto next = [&] {
        return QSize(windowSize.width() - 40 * (turn % 2), 800);
    };
    const Measurement measured = interleave(
        5,
        [&] {
            ++turn;
            return notes.ours.frames.until([&] { notes.ours.view.resize(next()); });
        },
        [&] {
            const double time = notes.stock.frames.until([&] { notes.stock.edit.resize(next()); });
            notes.stock.finishLayout();
            return time;
        });
    notes.ours.view.resize(windowSize);
    notes.stock.edit.resize(windowSize);
    notes.stock.finishLayout();
    return measured;
}

Measurement zoom()
{
    LargeNotes& notes = LargeNotes::shared();
    EditorGeometry page;
    page.pageWidth = 612;
    notes.ours.view.setGeometry(page);
    notes.ours.goToMiddle();
    int turn = 0;
    const Measurement measured = interleave(
        30,
        [&] {
            return notes.ours.frames.until(
                [&] { notes.ours.view.setZoom(++turn % 2 ? 1.0 : usualZoom); });
        },
        [&] { return notes.ours.frames.until([&] { notes.ours.view.viewport()->update(); }); });
    notes.ours.view.setZoom(usualZoom);
    notes.ours.view.setGeometry(EditorGeometry());
    return measured;
}

double heapMegabytes()
{
    const struct mallinfo2 info = mallinfo2();
    return double(info.uordblks + info.hblkhd) / 1e6;
}

void scrollThrough(QAbstractScrollArea& area)
{
    QScrollBar& bar = *area.verticalScrollBar();
    for (int value = 0; value < bar.maximum(); value += 700) {
        bar.setValue(value);
        QApplication::processEvents();
    }
}

Measurement memory()
{
    const AttributedString text = sampleText(million);
    double start = heapMegabytes();
    Measurement measured;
    {
        Ours ours(text);
        scrollThrough(ours.view);
        measured.figure = heapMegabytes() - start;
    }
    start = heapMegabytes();
    Stock stock(stockDocument(text));
    scrollThrough(stock.edit);
    measured.baseline = heapMegabytes() - start;
    return measured;
}

/// Steps of the wheel while the title is in sight, up and down.
Measurement titleScroll()
{
    const AttributedString text = sampleText(10'000);
    Ours titled(text);
    auto* head = new QWidget;
    auto* layout = new QVBoxLayout(head);
    layout->setContentsMargins(60, 48, 60, 8);
    auto* title = new QLineEdit(QStringLiteral("The harbour ledger"), head);
    title->setFrame(false);
    QFont font(QStringLiteral("Charis SIL"));
    font.setPixelSize(28);
    font.setBold(true);
    title->setFont(font);
    layout->addWidget(title);
    titled.view.setHead(head);
    titled.view.setHeadHeight(head->sizeHint().height());
    head->show();
    settle();
    Ours plain(text);
    const auto step = [](Ours& shown) {
        QScrollBar& bar = *shown.view.verticalScrollBar();
        return shown.frames.until([&] { bar.setValue(bar.value() > 0 ? 0 : 48); });
    };
    return interleave(
        120, [&] { return step(titled); }, [&] { return step(plain); });
}

Measurement savePrepare()
{
    LargeNotes& notes = LargeNotes::shared();
    const QByteArray archive(6 * million, 'x');
    QByteArray copy(archive.size(), Qt::Uninitialized);
    qsizetype length = 0;
    return interleave(
        20,
        [&] {
            notes.ours.gateway.type(u"x"_s);
            // The key after it counts too: it parts the text from the copy that is being saved.
            TextSnapshot snapshot;
            const double time = threadMillisecondsOf([&] {
                snapshot = notes.ours.store.snapshot();
                notes.ours.gateway.type(u"x"_s);
            });
            length += snapshot.toAttributedString().length();
            return time;
        },
        [&] {
            return threadMillisecondsOf([&] {
                std::memcpy(copy.data(), archive.constData(), std::size_t(archive.size()));
            });
        });
}

} // namespace

void addEditorRows()
{
    add({"editor/key-1m", "ms", 0.12, [] {
             return keyMillion(0.5, 60);
         }});
    add({"editor/key-1m-p99", "ms", 0.2, [] {
             return keyMillion(0.99, 300);
         }});
    add({"editor/key-flat", "ms", 1.3, keyFlat});
    add({"editor/key-long-word", "ms", 3, [] {
             return keyLong(AttributedString(sampleWord(million)));
         }});
    add({"editor/key-long-paragraph", "ms", 3, [] {
             return keyLong(sampleParagraph(200'000));
         }});
    add({"editor/two-layouts", "ms", 1.8, twoLayouts});
    add({"editor/return-1m", "ms", 0.2, returnKey});
    add({"editor/key-table", "ms", 0.1, keyTable});
    add({"table/insert-row", "ms", 0.5, insertTableRow});
    add({"table/paste-5k", "ms", 0.2, pasteCells});
    add({"table/drag-column", "ms", 4, dragColumn});
    add({"editor/open-1m", "ms", 1.5, open});
    add({"editor/resize-1m", "ms", 0.05, resize});
    add({"editor/zoom-1m", "ms", 3, zoom});
    add({"editor/title-scroll", "ms", 1.2, titleScroll});
    add({"editor/memory-1m", "MB", 1.0, memory});
    add({"text/save-prepare", "ms", 30, savePrepare, TargetOf::Figure});
}

} // namespace orvane::bench

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    orvane::bench::addEditorRows();
    return orvane::bench::runMain(argc, argv);
}
