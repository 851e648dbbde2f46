// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/sheets/QuestionSheetParts.h"

#include "appearance/Contrast.h"
#include "appearance/Drawing.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QHelpEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QTextLayout>
#include <QToolTip>
#include <QUrl>
#include <QVBoxLayout>

namespace orvane {

namespace {

constexpr int iconSize = 16;
constexpr int titleLines = 3;
constexpr int titleGap = 10;
constexpr int titlePitch = 20;
constexpr int cardPadding = 15;
constexpr int cardTop = 11;
constexpr int cardTitleHeight = 20;
constexpr int cardPitch = 16;
constexpr int cardRadius = 10;
constexpr double cardTint = 0.02;
constexpr int rowHeight = 34;
constexpr int rowGap = 4;
constexpr int listTop = 4;
constexpr int rowPadding = 10;
constexpr int gap = 8;
/// Of which a list shows whole rows at least before it scrolls.
constexpr qsizetype fewestRows = 3;
constexpr qsizetype mostRows = 7;

class AccessiblePart final : public QAccessibleWidget {
public:
    using QAccessibleWidget::QAccessibleWidget;
};

QAccessibleInterface* makeAccessible(const QString&, QObject* object)
{
    if (auto* card = qobject_cast<QuestionSideCard*>(object))
        return new AccessiblePart(card, QAccessible::Grouping);
    if (auto* list = qobject_cast<QuestionRowList*>(object))
        return new AccessiblePart(list, QAccessible::List);
    if (auto* row = qobject_cast<QuestionRowView*>(object))
        return new AccessiblePart(row, QAccessible::ListItem);
    return nullptr;
}

void makePartsAccessible()
{
    static const bool installed = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    Q_UNUSED(installed);
}

Symbol symbolOf(QuestionIcon icon)
{
    return icon == QuestionIcon::Folder ? Symbol::Folder : Symbol::Note;
}

/// Of a path both ends tell more than its middle.
QString cutToFit(const QString& text, const QFont& font, int width)
{
    const bool isPath = text.contains(u'/');
    return isPath ? QFontMetrics(font).elidedText(text, Qt::ElideMiddle, width)
                  : fitted(text, font, width);
}

bool hasRoomFor(const QString& text, const QFont& font, int width)
{
    return cutToFit(text, font, width) == text.simplified();
}

void drawLine(QPainter& painter, const QWidget& widget, const QRect& rect, const QString& text,
              Qt::Alignment alignment = Qt::AlignLeft)
{
    const QRect place = QStyle::visualRect(widget.layoutDirection(), widget.rect(), rect);
    painter.drawText(place,
                     int(QStyle::visualAlignment(widget.layoutDirection(), alignment)) |
                         Qt::AlignAbsolute | Qt::AlignVCenter | Qt::TextSingleLine,
                     cutToFit(text, painter.font(), place.width()));
}

void drawIcon(QPainter& painter, const QWidget& widget, const QRect& rect, Symbol symbol,
              const QColor& ink)
{
    drawSymbol(painter, QStyle::visualRect(widget.layoutDirection(), widget.rect(), rect), symbol,
               iconSize, ink);
}

/// What an event that asks for a tip gets; nothing takes an earlier one away.
bool showTip(QEvent* event, QWidget* widget, const QString& text)
{
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text, widget);
    return true;
}

/// A button that is words in the colour of links.
class LinkButton final : public QPushButton {
public:
    LinkButton(const QString& text, QWidget* parent)
        : QPushButton(text, parent)
    {
        setAutoDefault(false);
        setCursor(Qt::PointingHandCursor);
        setAttribute(Qt::WA_Hover);
    }
    [[nodiscard]] QSize sizeHint() const override
    {
        return {fontMetrics().horizontalAdvance(text()) + 2 * rowPadding, rowHeight - 6};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void focusInEvent(QFocusEvent* event) override
    {
        for (QWidget* above = parentWidget(); above; above = above->parentWidget()) {
            if (auto* area = qobject_cast<QScrollArea*>(above))
                area->ensureWidgetVisible(this);
        }
        QPushButton::focusInEvent(event);
    }
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        QFont words = font();
        words.setUnderline(underMouse());
        painter.setFont(words);
        painter.setPen(palette().color(QPalette::Link));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
        if (hasFocus())
            drawFocusRing(painter, rect(), 6, palette().color(QPalette::LinkVisited));
    }
};

} // namespace

QuestionTitle::QuestionTitle(Look& look, QWidget* parent)
    : QLabel(parent)
    , m_look(look)
{
    setTextFormat(Qt::PlainText);
    setTextStyle(this, TextStyle::WindowTitle);
    setWordWrap(true);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
}

void QuestionTitle::setTitle(const QString& title, Question::Tone tone)
{
    m_warns = tone == Question::Tone::Warning;
    setText(title);
    setAccessibleDescription(m_warns ? tr("Warning") : QString());
    updateGeometry();
    update();
}

int QuestionTitle::indent() const
{
    return m_warns ? iconSize + titleGap : 0;
}

QStringList QuestionTitle::linesFor(int width) const
{
    QTextLayout layout(text(), font());
    QTextOption option(Qt::AlignLeft);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    QStringList lines;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        const bool isLast = lines.size() + 1 == titleLines;
        const QString rest = text().mid(line.textStart());
        lines.append(isLast ? fitted(rest, font(), width) : rest.left(line.textLength()).trimmed());
        if (isLast)
            break;
    }
    layout.endLayout();
    return lines;
}

int QuestionTitle::heightForWidth(int width) const
{
    return titlePitch * int(qMax<qsizetype>(1, linesFor(width - indent()).size()));
}

QSize QuestionTitle::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(text()) + indent(), titlePitch};
}

QSize QuestionTitle::minimumSizeHint() const
{
    return {120, titlePitch};
}

void QuestionTitle::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const SurfaceTokens& card = m_look.tokens().on(Surface::Card);
    if (m_warns)
        drawIcon(painter, *this, {0, (titlePitch - iconSize) / 2, iconSize, iconSize},
                 Symbol::Warning, card.warning);
    painter.setPen(card.text);
    QRect line(indent(), 0, width() - indent(), titlePitch);
    for (const QString& words : linesFor(line.width())) {
        const QRect place = QStyle::visualRect(layoutDirection(), rect(), line);
        painter.drawText(place,
                         int(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft)) |
                             Qt::AlignAbsolute | Qt::AlignVCenter | Qt::TextSingleLine,
                         words);
        line.translate(0, titlePitch);
    }
}

bool QuestionTitle::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    const QStringList lines = linesFor(width() - indent());
    const bool isCut = lines.size() == titleLines && lines.last().endsWith(u'\u2026');
    return showTip(event, this, isCut ? text() : QString());
}

QuestionSideCard::QuestionSideCard(Look& look, QWidget* parent)
    : QWidget(parent)
    , m_look(look)
{
    makePartsAccessible();
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Minimum); // both are as high as the higher
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
}

void QuestionSideCard::setSide(const QuestionSide& side)
{
    if (side == m_side)
        return;
    m_side = side;
    setAccessibleName(side.title);
    setAccessibleDescription(side.lines.join(u'\n'));
    updateGeometry();
    update();
}

QSize QuestionSideCard::sizeHint() const
{
    return {276, 2 * cardTop + cardTitleHeight + cardPitch * int(m_side.lines.size())};
}

void QuestionSideCard::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const SurfaceTokens& card = m_look.tokens().on(Surface::Card);
    drawPanel(painter, rect(), cardRadius, blended(card.text, cardTint, card.ground), card.border);
    const QRect inner = rect().adjusted(cardPadding, 0, -cardPadding, 0);
    QRect line(inner.left(), cardTop, inner.width(), cardTitleHeight);
    drawIcon(painter, *this, {line.left(), line.top(), iconSize, line.height()},
             symbolOf(m_side.icon), card.icon);
    painter.setFont(interfaceFont(TextStyle::BodyMedium));
    painter.setPen(card.text);
    drawLine(painter, *this, line.adjusted(iconSize + gap, 0, 0, 0), m_side.title);
    painter.setFont(interfaceFont(TextStyle::Label));
    painter.setPen(card.textSecondary);
    line = QRect(inner.left(), cardTop + cardTitleHeight, inner.width(), cardPitch);
    for (const QString& words : m_side.lines) {
        drawLine(painter, *this, line, words);
        line.translate(0, cardPitch);
    }
}

bool QuestionSideCard::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const int room = width() - 2 * cardPadding;
    bool isCut =
        !hasRoomFor(m_side.title, interfaceFont(TextStyle::BodyMedium), room - iconSize - gap);
    for (const QString& line : m_side.lines)
        isCut = isCut || !hasRoomFor(line, interfaceFont(TextStyle::Label), room);
    const QString whole = m_side.title + u'\n' + m_side.lines.join(u'\n');
    return showTip(event, this, isCut ? whole : QString());
}

QuestionRowView::QuestionRowView(Look& look, QWidget* parent)
    : QWidget(parent)
    , m_look(look)
    , m_show(new LinkButton(tr("Show"), this))
{
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    m_show->setToolTip(tr("Show in the File Manager"));
    m_show->hide();
    connect(m_show, &QPushButton::clicked, this, &QuestionRowView::showInFileManager);
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
}

void QuestionRowView::setRow(const QuestionRow& row)
{
    if (row == m_row)
        return;
    m_row = row;
    setAccessibleName(row.title);
    setAccessibleDescription(row.detail);
    m_show->setVisible(!row.showsPath.isEmpty());
    m_show->setAccessibleName(tr("Show “%1” in the File Manager").arg(row.title));
    update();
}

QSize QuestionRowView::sizeHint() const
{
    return {560, rowHeight};
}

QRect QuestionRowView::detailRect() const
{
    const int end = width() - (m_row.showsPath.isEmpty() ? rowPadding : m_show->width() + gap);
    const int wanted = QFontMetrics(interfaceFont(TextStyle::Body)).horizontalAdvance(m_row.detail);
    const int detail = m_row.detail.isEmpty() ? 0 : qMin(wanted + 1, width() / 2);
    return {end - detail, 0, detail, rowHeight};
}

QRect QuestionRowView::titleRect() const
{
    const QRect detail = detailRect();
    const int start = rowPadding + iconSize + gap;
    const int between = detail.isEmpty() ? 0 : 2 * gap;
    return {start, 0, detail.left() - between - start, rowHeight};
}

void QuestionRowView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const SurfaceTokens& card = m_look.tokens().on(Surface::Card);
    drawPanel(painter, rect(), 6, card.hoveredRow);
    drawIcon(painter, *this, {rowPadding, 0, iconSize, rowHeight}, symbolOf(m_row.icon), card.icon);
    painter.setFont(interfaceFont(TextStyle::Body));
    painter.setPen(card.text);
    drawLine(painter, *this, titleRect(), m_row.title);
    painter.setPen(card.textSecondary);
    drawLine(painter, *this, detailRect(), m_row.detail, Qt::AlignRight);
}

void QuestionRowView::resizeEvent(QResizeEvent*)
{
    const QSize size = m_show->sizeHint();
    const QRect place(width() - size.width(), (rowHeight - size.height()) / 2, size.width(),
                      size.height());
    m_show->setGeometry(QStyle::visualRect(layoutDirection(), rect(), place));
}

bool QuestionRowView::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const QFont font = interfaceFont(TextStyle::Body);
    const bool isCut = !hasRoomFor(m_row.title, font, titleRect().width()) ||
                       !hasRoomFor(m_row.detail, font, detailRect().width());
    const QString whole = m_row.detail.isEmpty() ? m_row.title : m_row.title + u'\n' + m_row.detail;
    return showTip(event, this, isCut ? whole : QString());
}

void QuestionRowView::showInFileManager()
{
    const QFileInfo info(m_row.showsPath);
    const QString folder = info.isDir() ? info.filePath() : info.path();
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(folder)))
        QToolTip::showText(m_show->mapToGlobal(m_show->rect().bottomLeft()),
                           tr("No file manager took it. It is “%1”.")
                               .arg(QDir::toNativeSeparators(m_row.showsPath)),
                           m_show);
}

QuestionRowList::QuestionRowList(Look& look, QWidget* parent)
    : QScrollArea(parent)
    , m_look(look)
    , m_content(new QWidget)
    , m_layout(new QVBoxLayout(m_content))
{
    m_layout->setContentsMargins({});
    m_layout->setSpacing(rowGap);
    setFrameShape(QFrame::NoFrame);
    setViewportMargins(0, listTop, 0, 0);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    setWidget(m_content);
    viewport()->setAutoFillBackground(false);
    m_content->setAutoFillBackground(false);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    setAccessibleName(tr("List"));
    // The keyboard scrolls it where there is something to scroll.
    setFocusPolicy(Qt::NoFocus);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this,
            [this](int, int maximum) { setFocusPolicy(maximum > 0 ? Qt::TabFocus : Qt::NoFocus); });
}

void QuestionRowList::setRows(const QList<QuestionRow>& rows)
{
    const bool isOther = rows.size() != m_rows.size();
    while (m_rows.size() > rows.size())
        delete m_rows.takeLast();
    while (m_rows.size() < rows.size()) {
        m_rows.append(new QuestionRowView(m_look, m_content));
        m_layout->addWidget(m_rows.last());
    }
    for (qsizetype i = 0; i < rows.size(); ++i)
        m_rows.at(i)->setRow(rows.at(i));
    setVisible(!rows.isEmpty());
    if (isOther)
        updateGeometry();
}

int QuestionRowList::heightOf(qsizetype rows) const
{
    return listTop + int(rows) * (rowHeight + rowGap) - rowGap;
}

QSize QuestionRowList::sizeHint() const
{
    return {560, heightOf(qMin(m_rows.size(), mostRows)) + (m_rows.size() > mostRows ? 19 : 0)};
}

QSize QuestionRowList::minimumSizeHint() const
{
    return {120, heightOf(qMin(m_rows.size(), fewestRows))};
}

void QuestionRowList::paintEvent(QPaintEvent* event)
{
    QScrollArea::paintEvent(event);
    if (!hasFocus())
        return;
    QPainter painter(viewport());
    drawFocusRing(painter, viewport()->rect(), 6, m_look.tokens().on(Surface::Card).accent);
}

} // namespace orvane
