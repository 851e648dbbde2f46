// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/find/FindSession.h"
#include "editor/spelling/SpellingMarks.h"
#include "editor/view/EditorView.h"
#include "text/store/TextStore.h"
#include "writing/WritingBench.h"

#include <QTemporaryDir>
#include <QTextBlock>

#include <memory>
#include <random>

namespace orvane::bench {

using namespace Qt::StringLiterals;

namespace {

constexpr int paragraphs = 1000;

/// 100,000 words, one in twenty misspelt.
QString sampleNote()
{
    const QStringList words{u"the"_s,  u"ledger"_s, u"tide"_s, u"had"_s,   u"been"_s,
                            u"kept"_s, u"by"_s,     u"four"_s, u"hands"_s, u"posts"_s};
    std::mt19937 random(4);
    QString note;
    for (int i = 0; i < paragraphs * 100; ++i) {
        note += random() % 20 == 0 ? u"tihs"_s : words[qsizetype(random() % 10)];
        note += i % 100 == 99 ? u'\n' : u' ';
    }
    return note;
}

struct Note {
    TextStore store;
    EditGateway gateway{store};
    EditorView view;
    PaintedFrames frames{view.viewport()};

    Note()
    {
        gateway.loadPlainText(sampleNote());
        view.setBaseFont({u"Inter"_s, 16});
        view.setGateway(&gateway);
        showForKeys(view);
    }
    ~Note() { view.setGateway(nullptr); }

    double keyAt(int paragraph)
    {
        const QTextBlock block = store.document().findBlockByNumber(paragraph);
        view.setSelection(TextSelection::caret(block.position() + block.length() / 2));
        view.ensureCaretVisible();
        settle();
        return frames.until([&] { pressKey(view, Qt::Key_E, u"e"_s); });
    }
};

Measurement compareKeys(Note& subject, Note& bare)
{
    std::mt19937 ofSubject(9);
    std::mt19937 ofBare(9);
    return interleave(
        200, [&] { return subject.keyAt(int(ofSubject() % paragraphs)); },
        [&] { return bare.keyAt(int(ofBare() % paragraphs)); });
}

void write(const QString& path, const QByteArray& bytes)
{
    if (!writeFileAtomically(path, bytes))
        qFatal("can't write %ls", qUtf16Printable(path));
}

Measurement keyWithSpelling()
{
    QTemporaryDir folder;
    write(folder.filePath(u"en_US.aff"_s), "SET UTF-8\n");
    write(folder.filePath(u"en_US.dic"_s),
          "10\nthe\nledger\ntide\nhad\nbeen\nkept\nby\nfour\nhands\nposts\n");
    UserDefaults defaults;
    Spelling spelling(defaults, {}, {folder.path()}, u"en_US"_s);
    Note checked;
    SpellingMarks marks(checked.view, spelling);
    const QUuid note = QUuid::createUuid();
    marks.setNote(note);
    while (!spelling.checkerFor(note)->isReady())
        settle();
    Note bare;
    return compareKeys(checked, bare);
}

Measurement keyWithMatches()
{
    CountingBeeper beeper;
    Note searched;
    FindSession find(searched.view, beeper);
    find.setQuery(u"the"_s);
    if (find.matchCount() < 5000)
        qFatal("too few matches");
    Note bare;
    return compareKeys(searched, bare);
}

} // namespace

void addToolRows()
{
    add({"spelling/key", "ms", 1.25, keyWithSpelling});
    add({"find/key", "ms", 1.5, keyWithMatches});
}

} // namespace orvane::bench
