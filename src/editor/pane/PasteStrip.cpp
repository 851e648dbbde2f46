// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/pane/PasteStrip.h"

#include "appearance/Drawing.h"
#include "editor/view/EditorView.h"

#include <QAccessible>
#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QPainter>
#include <QPushButton>

namespace orvane {

namespace {

/// Around the card, for its shadow.
constexpr int shadow = 28;
constexpr int padding = 12;
constexpr int corner = 10;
constexpr int buttonHeight = 28;
constexpr int gapToFoot = 12;

QString inWords(std::initializer_list<std::pair<int, QString>> parts)
{
    QStringList words;
    for (const auto& [count, text] : parts) {
        if (count > 0)
            words.append(text);
    }
    return QLocale(QLocale::English).createSeparatedList(words);
}

} // namespace

QString cameInWords(const ImportAccount& account)
{
    return inWords({
        {account.footnotes, PasteStrip::tr("%Ln footnotes", nullptr, account.footnotes)},
        {account.comments, PasteStrip::tr("%Ln comments", nullptr, account.comments)},
        {account.textBoxes, PasteStrip::tr("%Ln text boxes", nullptr, account.textBoxes)},
    });
}

QString stayedBehindWords(const ImportAccount& account)
{
    return inWords({
        {account.pictures, PasteStrip::tr("%Ln pictures", nullptr, account.pictures)},
        {account.headers, PasteStrip::tr("%Ln headers and footers", nullptr, account.headers)},
        {account.media, PasteStrip::tr("%Ln embedded objects", nullptr, account.media)},
    });
}

PasteStrip::PasteStrip(EditorView& view, Look& look, int above, QWidget& pane)
    : QWidget(&pane)
    , m_view(view)
    , m_look(look)
    , m_pane(pane)
    , m_above(above)
    , m_sentences(new QBoxLayout(QBoxLayout::LeftToRight))
    , m_picture(new QLabel(this))
    , m_came(makeLabel({}, TextStyle::Body, LabelInk::Primary, this))
    , m_behind(makeLabel({}, TextStyle::Body, LabelInk::Secondary, this))
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(shadow + padding + 4, shadow + 6, shadow + padding - 2, shadow + 6);
    row->setSpacing(10);
    m_sentences->setSpacing(6);
    m_sentences->addWidget(m_came);
    m_sentences->addWidget(m_behind);
    auto* plain = new QPushButton(tr("Paste as Plain Text"), this);
    auto* undo = new QPushButton(tr("Undo"), this);
    row->addWidget(m_picture);
    row->addLayout(m_sentences, 1);
    row->addSpacing(6);
    for (QPushButton* button : {plain, undo}) {
        button->setFixedHeight(buttonHeight);
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    connect(plain, &QPushButton::clicked, this, [this] {
        takeBack();
        m_view.pastePlain(m_plainText);
    });
    connect(undo, &QPushButton::clicked, this, &PasteStrip::takeBack);
    connect(&view, &EditorView::pasted, this, &PasteStrip::tell);
    const auto applyLook = [this] {
        setPalette(m_look.palette(Surface::Card));
        m_picture->setPixmap(m_look.icon(Symbol::Paste, Surface::Card).pixmap(QSize(16, 16)));
    };
    connect(&look, &Look::changed, this, applyLook);
    applyLook();
    view.installEventFilter(this);
    pane.installEventFilter(this);
    hide();
}

void PasteStrip::tell(const ImportAccount& account, const QString& plainText)
{
    const QString came = cameInWords(account);
    const QString behind = stayedBehindWords(account);
    m_plainText = plainText;
    m_came->setText(came.isEmpty() ? tr("Pasted.") : tr("Pasted with %1.").arg(came));
    m_behind->setText(behind.isEmpty() ? QString() : tr("%1 stayed behind.").arg(behind));
    m_behind->setVisible(!behind.isEmpty());
    setAccessibleName(behind.isEmpty()
                          ? m_came->text()
                          : tr("%1 %2", "two sentences").arg(m_came->text(), m_behind->text()));
    show();
    place();
    raise();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

/// Side by side where there is room, else one sentence below the other.
void PasteStrip::place()
{
    const int widest = m_pane.width() - 2 * gapToFoot + 2 * shadow;
    const auto arrange = [this](QBoxLayout::Direction direction, bool wraps) {
        m_sentences->setDirection(direction);
        for (QLabel* label : {m_came, m_behind})
            label->setWordWrap(wraps);
        m_sentences->invalidate();
        layout()->invalidate();
    };
    arrange(QBoxLayout::LeftToRight, false);
    if (sizeHint().width() > widest)
        arrange(QBoxLayout::TopToBottom, true);
    const int width = qMin(sizeHint().width(), widest);
    const int height = hasHeightForWidth() ? heightForWidth(width) : sizeHint().height();
    setGeometry((m_pane.width() - width) / 2,
                m_pane.height() - m_above - gapToFoot + shadow - height, width, height);
}

void PasteStrip::takeBack()
{
    hide();
    m_view.undo();
    m_view.setFocus();
}

bool PasteStrip::eventFilter(QObject* watched, QEvent* event)
{
    if (isVisible() && watched == &m_pane && event->type() == QEvent::Resize)
        place();
    if (isVisible() && watched == &m_view && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const bool isOnlyHeld = key == Qt::Key_Control || key == Qt::Key_Shift ||
                                key == Qt::Key_Alt || key == Qt::Key_Meta;
        if (!isOnlyHeld)
            hide();
    }
    return QWidget::eventFilter(watched, event);
}

void PasteStrip::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const SurfaceTokens& card = m_look.tokens().on(Surface::Card);
    const QRect face = rect().adjusted(shadow, shadow, -shadow, -shadow);
    drawCardShadow(painter, face, corner);
    drawPanel(painter, face, corner, card.ground, card.border);
}

} // namespace orvane
