// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/inspector/VersionPreviewSheet.h"

#include "appearance/Contrast.h"
#include "appearance/OrvaneStyle.h"
#include "core/records/Wording.h"
#include "shell/inspector/VersionRows.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTextEdit>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

using Kind = TextPiece::Kind;

constexpr int padding = 28;
constexpr int bodyPixels = 16;
constexpr int titlePixels = 22;

int wordsOfKind(const QList<TextPiece>& pieces, Kind kind)
{
    int words = 0;
    for (const TextPiece& piece : pieces)
        words += piece.kind == kind ? wordCount(piece.text) : 0;
    return words;
}

/// How a piece looks on the page: what is gone struck through, what is new underlined, so that
/// the two differ by more than their colour.
QTextCharFormat formatOf(Kind kind, const QFont& font, const Tokens& t)
{
    QTextCharFormat format;
    format.setFont(font);
    format.setForeground(t.on(Surface::Page).text);
    if (kind == Kind::Removed) {
        const QColor ground = blended(t.danger, 0.14, t.on(Surface::Page).ground);
        format.setBackground(ground);
        format.setForeground(readableInk(t.danger, ground));
        format.setFontStrikeOut(true);
    } else if (kind == Kind::Added) {
        const QColor ground = blended(t.accent, 0.14, t.on(Surface::Page).ground);
        format.setBackground(ground);
        format.setForeground(readableInk(t.accent, ground));
        format.setFontUnderline(true);
    }
    return format;
}

void insert(QTextCursor& cursor, const QList<TextPiece>& pieces, const QFont& font, const Tokens& t)
{
    for (const TextPiece& piece : pieces)
        cursor.insertText(piece.text, formatOf(piece.kind, font, t));
}

} // namespace

VersionPreviewSheet::VersionPreviewSheet(const NoteVersionSnapshot& version, const NoteRecord& note,
                                         Timestamp now, const QString& fontFamily,
                                         Restoring restoring, Look& look, QWidget* parent)
    : Sheet(look, parent)
    , m_version(version)
    , m_title(textDifference(version.title, note.title))
    , m_body(textDifference(version.bodyPlain, note.body.readOrNothing()))
    , m_fontFamily(fontFamily)
    , m_text(new QTextEdit(this))
    , m_marks(new QCheckBox(tr("Mark what has changed since"), this))
    , m_legend(makeLabel({}, TextStyle::Label, LabelInk::Secondary, this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(padding, padding - 4, padding, padding - 4);
    layout->setSpacing(0);
    layout->addLayout(makeHead(now, note));
    layout->addSpacing(16);
    m_text->setReadOnly(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_text->setTabChangesFocus(true);
    m_text->setFrameShape(QFrame::NoFrame);
    m_text->setAccessibleName(tr("Text of the version"));
    m_text->document()->setDocumentMargin(24);
    layout->addWidget(m_text, 1);
    layout->addSpacing(8);
    m_legend->setFixedHeight(20);
    layout->addWidget(m_legend);
    layout->addSpacing(12);
    layout->addLayout(makeFoot(restoring));
    m_marks->setChecked(true);
    connect(m_marks, &QCheckBox::toggled, this, &VersionPreviewSheet::showText);
    connect(&look, &Look::changed, this, &VersionPreviewSheet::showText);
    showText();
}

QLayout* VersionPreviewSheet::makeHead(Timestamp now, const NoteRecord& note)
{
    const QString moment = versionMoment(m_version.capturedAt, now);
    setAccessibleName(tr("Version of %1").arg(moment));
    auto* head = new QVBoxLayout;
    head->setSpacing(4);
    head->addWidget(makeLabel(tr("Version of %1").arg(moment), TextStyle::WindowTitle));
    QStringList facts;
    if (m_version.label)
        facts.append(*m_version.label);
    const int words = wordCount(m_version.bodyPlain);
    facts.append(tr("%Ln words", nullptr, int(words)));
    const QString difference = differenceInWords(words, wordCount(note.body.readOrNothing()));
    if (!difference.isEmpty())
        facts.append(tr("%1 than now").arg(difference));
    head->addWidget(makeLabel(facts.join(u", "_s), TextStyle::Body, LabelInk::Secondary));
    return head;
}

QLayout* VersionPreviewSheet::makeFoot(Restoring restoring)
{
    auto* foot = new QHBoxLayout;
    foot->setSpacing(10);
    auto* close = new QPushButton(tr("Close"), this);
    auto* restore = new QPushButton(tr("Restore"), this);
    setButtonTone(restore, ButtonTone::Accent);
    restore->setEnabled(restoring == Restoring::Offered);
    foot->addWidget(m_marks);
    foot->addStretch();
    foot->addWidget(close);
    foot->addWidget(restore);
    connect(close, &QPushButton::clicked, this, [this] { dismiss(); });
    connect(restore, &QPushButton::clicked, this, [this] {
        emit restoreRequested();
        dismiss();
    });
    return foot;
}

QWidget* VersionPreviewSheet::initialFocus()
{
    return m_text;
}

void VersionPreviewSheet::showText()
{
    const Tokens& t = look().tokens();
    QPalette palette = look().palette(Surface::Page);
    palette.setColor(QPalette::Base, t.on(Surface::Page).ground);
    m_text->setPalette(palette);
    const bool marked = m_marks->isChecked();
    const int scrolled = m_text->verticalScrollBar()->value();
    const QList<TextPiece> plainTitle{{Kind::Same, m_version.title}};
    const QList<TextPiece> plainBody{{Kind::Same, m_version.bodyPlain}};

    m_text->setUpdatesEnabled(false);
    m_text->clear();
    QTextCursor cursor(m_text->document());
    cursor.beginEditBlock();
    QTextBlockFormat block;
    if (!m_version.title.isEmpty() || (marked && !m_title.isEmpty())) {
        block.setBottomMargin(12);
        cursor.setBlockFormat(block);
        insert(cursor, marked ? m_title : plainTitle,
               editorFont(m_fontFamily, titlePixels, QFont::Bold), t);
        cursor.insertBlock();
    }
    block.setBottomMargin(0);
    block.setLineHeight(120, QTextBlockFormat::ProportionalHeight);
    cursor.setBlockFormat(block);
    insert(cursor, marked ? m_body : plainBody, editorFont(m_fontFamily, bodyPixels), t);
    cursor.endEditBlock();
    m_text->moveCursor(QTextCursor::Start);
    m_text->verticalScrollBar()->setValue(scrolled);
    m_text->setUpdatesEnabled(true);

    const int removed = wordsOfKind(m_body, Kind::Removed);
    const int added = wordsOfKind(m_body, Kind::Added);
    if (!marked)
        m_legend->clear();
    else if (removed == 0 && added == 0)
        m_legend->setText(tr("The text has not changed since."));
    else
        m_legend->setText(tr("Struck through: removed since, %1 words. Underlined: added since, %2 "
                             "words.")
                              .arg(grouped(removed), grouped(added)));
}

} // namespace orvane
