// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/EditorTextHost.h"

#include "editor/EditorView.h"

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

EditorLook lookOf(const RichTextViewRepresentable& parent)
{
    EditorLook look;
    look.background = parent.backgroundColor;
    look.caret = parent.cursorColor;
    look.inactiveSelection = parent.inactiveSelectionColor;
    look.text.text = parent.textColor;
    look.text.link = parent.linkColor;
    look.text.selection = parent.selectionColor;
    look.text.separator = parent.separatorColor;
    look.text.page = parent.backgroundColor;
    look.text.dimmed = parent.dimmedColor;
    return look;
}

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
}

void EditorTextHost::applyParent(const RichTextViewRepresentable& parent)
{
    if (m_parent == parent)
        return;
    m_parent = parent;
    m_view->setLook(lookOf(parent));
    QPalette palette = m_view->palette();
    palette.setColor(QPalette::Window, parent.backgroundColor);
    m_view->setPalette(palette);
    m_view->setEditable(parent.isEditable);
    TextFont font;
    font.family = parent.fontName;
    font.size = parent.fontSize;
    m_view->setBaseFont(font);
    m_view->setZoom(parent.visualZoom);
    EditorGeometry geometry;
    geometry.horizontalMargin = narrowestMargin / parent.visualZoom;
    geometry.verticalMargin = 0;
    geometry.widestColumn = parent.columnWidth / parent.visualZoom;
    geometry.bottomPadding = parent.bottomDocumentPadding + leastBottomSpace;
    m_view->setGeometry(geometry);
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

int EditorTextHost::columnLeft(int width) const
{
    const int spare =
        width - m_view->verticalScrollBar()->sizeHint().width() - m_parent.columnWidth;
    return qMax(qRound(spare / 2.0), narrowestMargin);
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
