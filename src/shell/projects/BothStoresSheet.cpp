// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/projects/BothStoresSheet.h"

#include "core/records/Wording.h"
#include "core/versions/NoteVersion.h"
#include "shell/window/TwoLineDelegate.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTextEdit>

namespace orvane {

namespace {

constexpr int padding = 28;
constexpr int listWidth = 260;
constexpr int bodyPixels = 14;

} // namespace

BothStoresSheet::BothStoresSheet(const StoreSides& sides, const QString& projectTitle,
                                 Timestamp now, Look& look, QWidget* parent)
    : Sheet(look, parent)
    , m_differences(sides.differences())
    , m_now(now)
    , m_list(new QListWidget(this))
{
    const QString title = tr("Both sides of “%1”").arg(projectTitle);
    setAccessibleName(title);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(padding, padding - 4, padding, padding - 4);
    layout->setSpacing(0);
    layout->addWidget(makeLabel(title, TextStyle::WindowTitle));
    layout->addSpacing(4);
    const int count = int(m_differences.size());
    QString summary = count == 1 ? tr("1 note is not the same on both sides.")
                                 : tr("%Ln notes are not the same on both sides.", nullptr, count);
    if (count == 0)
        summary = tr("Both sides hold the same notes; only their order or their folders differ.");
    layout->addWidget(makeLabel(summary, TextStyle::Body, LabelInk::Secondary));
    layout->addSpacing(16);
    auto* columns = new QHBoxLayout;
    columns->setSpacing(16);
    m_list->setFixedWidth(listWidth);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setItemDelegate(new TwoLineDelegate(Symbol::Note, look, m_list));
    m_list->viewport()->setAutoFillBackground(false);
    m_list->setAccessibleName(tr("Notes that differ"));
    columns->addWidget(m_list);
    columns->addWidget(makeColumn(tr("Mine, open here"), m_mineFacts, m_mine), 1);
    columns->addWidget(makeColumn(tr("Theirs, on disk"), m_theirFacts, m_theirs), 1);
    layout->addLayout(columns, 1);
    layout->addSpacing(16);
    layout->addLayout(makeFoot());
    fillList();
    connect(m_list, &QListWidget::currentRowChanged, this, &BothStoresSheet::showNote);
    connect(&look, &Look::changed, this, [this] { showNote(m_list->currentRow()); });
    m_list->setCurrentRow(0);
    showNote(m_list->currentRow());
}

QWidget* BothStoresSheet::makeColumn(const QString& title, QLabel*& facts, QTextEdit*& text)
{
    auto* column = new QWidget(this);
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins({});
    layout->setSpacing(4);
    layout->addWidget(makeLabel(title, TextStyle::BodyStrong));
    facts = makeLabel({}, TextStyle::Label, LabelInk::Secondary, column);
    layout->addWidget(facts);
    text = new QTextEdit(column);
    text->setReadOnly(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text->setTabChangesFocus(true);
    text->setFrameShape(QFrame::NoFrame);
    text->setAccessibleName(title);
    text->document()->setDocumentMargin(16);
    layout->addSpacing(4);
    layout->addWidget(text, 1);
    return column;
}

QLayout* BothStoresSheet::makeFoot()
{
    auto* foot = new QHBoxLayout;
    foot->setSpacing(10);
    auto* close = new QPushButton(tr("Decide Later"), this);
    auto* take = new QPushButton(tr("Take Theirs"), this);
    auto* keep = new QPushButton(tr("Keep Mine"), this);
    foot->addWidget(close);
    foot->addStretch();
    foot->addWidget(take);
    foot->addWidget(keep);
    connect(close, &QPushButton::clicked, this, [this] { dismiss(); });
    connect(take, &QPushButton::clicked, this, [this] { decide(Decision::TakeTheirs); });
    connect(keep, &QPushButton::clicked, this, [this] { decide(Decision::KeepMine); });
    return foot;
}

void BothStoresSheet::decide(Decision decision)
{
    emit decided(decision);
    dismiss();
}

QWidget* BothStoresSheet::initialFocus()
{
    return m_list;
}

void BothStoresSheet::fillList()
{
    using Kind = StoreSides::Difference::Kind;
    for (const StoreSides::Difference& each : std::as_const(m_differences)) {
        const QString title = (each.mine ? *each.mine : *each.theirs)->titleForList();
        QString what;
        switch (each.kind) {
        case Kind::OnlyMine:
            what = tr("only here");
            break;
        case Kind::OnlyTheirs:
            what = tr("only there");
            break;
        case Kind::MineIsNewer:
            what = tr("newer here");
            break;
        case Kind::TheirsIsNewer:
            what = tr("newer there");
            break;
        }
        auto* item = new QListWidgetItem(title, m_list);
        item->setData(TwoLineDelegate::LineRole, what);
        item->setData(Qt::AccessibleTextRole,
                      tr("%1, %2", "a note's title, how its sides differ").arg(title, what));
        item->setToolTip(title);
    }
}

void BothStoresSheet::showNote(int row)
{
    const bool isThere = row >= 0 && row < m_differences.size();
    const auto none = std::optional<Shared<NoteRecord>>();
    showSide(isThere ? m_differences.at(row).mine : none, *m_mineFacts, *m_mine);
    showSide(isThere ? m_differences.at(row).theirs : none, *m_theirFacts, *m_theirs);
}

void BothStoresSheet::showSide(const std::optional<Shared<NoteRecord>>& note, QLabel& facts,
                               QTextEdit& text)
{
    const Tokens& t = look().tokens();
    QPalette palette = look().palette(Surface::Page);
    palette.setColor(QPalette::Base, t.on(Surface::Page).ground);
    text.setPalette(palette);
    text.setFont(editorFont(QStringLiteral("Georgia"), bodyPixels));
    if (!note) {
        facts.setText(tr("It is not on this side."));
        return text.clear();
    }
    const QString body = (*note)->body.readOrNothing();
    const int words = wordCount(body);
    facts.setText(words == 1
                      ? tr("1 word, changed %1").arg(momentInWords((*note)->updatedAt, m_now))
                      : tr("%Ln words, changed %1", nullptr, words)
                            .arg(momentInWords((*note)->updatedAt, m_now)));
    text.setPlainText(body);
}

} // namespace orvane
