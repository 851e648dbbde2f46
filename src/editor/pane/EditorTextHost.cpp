// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/pane/EditorTextHost.h"

#include "editor/page/PageSurface.h"
#include "editor/view/EditorView.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <QVBoxLayout>

namespace orvane {

namespace {

constexpr int narrowestMargin = 24;
/// Below the padding that a person has asked for, in points.
constexpr double leastBottomSpace = 48;
/// How far down the view the caret is brought in a text that is shown again.
constexpr double caretShare = 0.35;

} // namespace

EditorTextHost::EditorTextHost(QWidget* parent)
    : QWidget(parent)
    , m_view(new EditorView(this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_view);
    setFocusProxy(m_view);
    m_view->setFrameShape(QFrame::NoFrame);
    // The column stays where it is when a text grows beyond the view.
    m_view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    m_view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_view->setAccessibleName(tr("Text of the note"));
    m_view->installEventFilter(this);
    m_surface = std::make_unique<PageSurface>(*m_view);
}

EditorTextHost::~EditorTextHost() = default;

void EditorTextHost::applyParent(const RichTextViewRepresentable& parent)
{
    if (m_parent == parent)
        return;
    m_parent = parent;
    m_view->setLook(parent.look);
    QPalette palette = m_view->palette();
    palette.setColor(QPalette::Window, m_view->look().background);
    m_view->setPalette(palette);
    m_view->setEditable(parent.isEditable);
    TextFont font;
    font.family = parent.fontName;
    font.size = parent.fontSize;
    m_view->setBaseFont(font);
    m_view->setHeadingSizes(parent.headingSizes);
    placeText();
    m_view->setFormatting(parent.editorMode == EditorMode::richText ? TextFormatting::rich
                                                                    : TextFormatting::plain);
}

void EditorTextHost::showText(EditGateway* text)
{
    if (text && &m_view->gateway() == text)
        return;
    const qreal height = m_view->viewport()->height();
    const auto caretIsSeen = [&] {
        const QRectF caret = m_view->caretRect();
        return caret.top() >= 0 && caret.bottom() <= height;
    };
    const bool wasScrolled = m_view->verticalScrollBar()->value() > 0;
    const bool staysInPlace =
        text && m_parent.noteID == m_shownNote && wasScrolled && caretIsSeen();
    const qreal share = staysInPlace ? m_view->caretRect().top() / height : caretShare;
    m_shownNote = m_parent.noteID;
    m_view->setGateway(text);
    if (text && (staysInPlace || !caretIsSeen()))
        m_view->scrollCaretTo(share);
}

PageFit EditorTextHost::pageFit(int width) const
{
    return fitPage(width - m_view->verticalScrollBar()->sizeHint().width(), m_parent.visualZoom,
                   m_parent.pageMargins.left(), m_parent.pageMargins.right());
}

void EditorTextHost::placeText()
{
    EditorGeometry geometry;
    geometry.verticalMargin = 0;
    geometry.bottomPadding = m_parent.bottomDocumentPadding + leastBottomSpace;
    if (m_parent.pageViewEnabled) {
        const PageFit fit = pageFit(width());
        m_view->setZoom(fit.zoom);
        geometry.pageWidth = fit.width();
        geometry.leftMargin = fit.leftMargin;
        geometry.rightMargin = fit.rightMargin;
        const QMarginsF& margins = m_parent.pageMargins;
        geometry.tallestObject =
            qMax(screenPageHeight - qMax(margins.top(), 0.0) - qMax(margins.bottom(), 0.0), 100.0);
        geometry.bottomPadding +=
            qMax(m_parent.pageMargins.bottom(), 0.0) + deskAbovePage / fit.zoom;
        m_surface->setFit(fit);
    } else {
        m_view->setZoom(m_parent.visualZoom);
        geometry.leftMargin = geometry.rightMargin = narrowestMargin / m_parent.visualZoom;
        geometry.widestColumn = m_parent.columnWidth / m_parent.visualZoom;
        m_surface->setFit({});
    }
    m_view->setGeometry(geometry);
    emit textPlaced();
}

void EditorTextHost::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    placeText();
}

TextColumn EditorTextHost::columnIn(int width) const
{
    const int seen = width - m_view->verticalScrollBar()->sizeHint().width();
    TextColumn column;
    if (!m_parent.pageViewEnabled) {
        column.left = qMax(qRound((seen - m_parent.columnWidth) / 2.0), narrowestMargin);
        column.width = qMin(m_parent.columnWidth, width - narrowestMargin - column.left);
        column.sheetLeft = column.left;
        column.sheetWidth = column.width;
        return column;
    }
    // As the view and its paper place them.
    const PageFit fit = pageFit(width);
    const qreal desk = qMax((seen - fit.width() * fit.zoom) / 2, 0.0);
    column.left = qRound(desk + fit.leftMargin * fit.zoom);
    column.width = qRound(fit.column * fit.zoom);
    column.sheetLeft = qRound(column.left - fit.leftMargin * fit.zoom);
    column.sheetWidth = qRound(fit.width() * fit.zoom);
    column.topMargin = qRound(qMax(m_parent.pageMargins.top(), 0.0) * fit.zoom);
    return column;
}

bool EditorTextHost::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_view && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Up && key->modifiers() == Qt::NoModifier &&
            caretIsInFirstLine()) {
            emit leftAtTop();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

bool EditorTextHost::caretIsInFirstLine() const
{
    const QRectF caret = m_view->caretRect();
    return m_view->toPage(caret.center()).y() < caret.height() / m_view->zoom();
}

} // namespace orvane
