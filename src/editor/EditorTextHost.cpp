// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/EditorView.h"
#include "editor/TextHost.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <QVBoxLayout>

namespace orvane {

namespace {

constexpr int narrowestMargin = 24;

/// The text view as the editor pane knows it.
class EditorTextHost final : public TextHost {
    Q_OBJECT
public:
    explicit EditorTextHost(QWidget* parent)
        : TextHost(parent)
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
        m_view->setFormatting(TextFormatting::plain);
        m_view->setAccessibleName(tr("Text of the note"));
        m_view->installEventFilter(this);
        connect(m_view, &EditorView::textChanged, this, [this] {
            if (!m_loading)
                emit edited();
        });
    }

    void setText(const QString& text) override
    {
        m_loading = true;
        m_view->setPlainText(text);
        m_loading = false;
    }
    [[nodiscard]] QString text() const override { return m_view->plainText(); }
    void setEditable(bool editable) override { m_view->setEditable(editable); }
    [[nodiscard]] QWidget* focusTarget() override { return m_view; }
    [[nodiscard]] int columnLeft(int width) const override
    {
        const int spare = width - m_view->verticalScrollBar()->sizeHint().width() - m_columnWidth;
        return qMax(qRound(spare / 2.0), narrowestMargin);
    }

    void setHostLook(const TextHostLook& look) override
    {
        EditorLook colors;
        colors.background = look.page;
        colors.caret = look.caret;
        colors.inactiveSelection = look.inactiveSelection;
        colors.text.text = look.text;
        colors.text.link = look.link;
        colors.text.selection = look.selection;
        colors.text.separator = look.separator;
        colors.text.page = look.page;
        colors.text.dimmed = look.dimmed;
        m_view->setLook(colors);
        QPalette palette = m_view->palette();
        palette.setColor(QPalette::Window, look.page);
        m_view->setPalette(palette);

        TextFont font;
        font.family = look.fontFamily;
        font.size = look.fontSize;
        m_view->setBaseFont(font);
        m_view->setZoom(look.zoom);
        m_columnWidth = look.columnWidth;
        EditorGeometry geometry;
        geometry.horizontalMargin = narrowestMargin / look.zoom;
        geometry.verticalMargin = 0;
        geometry.widestColumn = look.columnWidth / look.zoom;
        geometry.bottomPadding = look.bottomPadding;
        m_view->setGeometry(geometry);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == m_view && event->type() == QEvent::KeyPress) {
            const auto* key = static_cast<QKeyEvent*>(event);
            if (key->key() == Qt::Key_Up && key->modifiers() == Qt::NoModifier &&
                caretIsInFirstLine()) {
                emit leftAtTop();
                return true;
            }
        }
        return TextHost::eventFilter(watched, event);
    }

private:
    [[nodiscard]] bool caretIsInFirstLine() const
    {
        const QRectF caret = m_view->caretRect();
        return m_view->toPage(caret.center()).y() < caret.height() / m_view->zoom();
    }

    EditorView* m_view;
    int m_columnWidth = 0;
    bool m_loading = false;
};

} // namespace

TextHost* makeTextHost(QWidget* parent)
{
    return new EditorTextHost(parent);
}

} // namespace orvane

#include "EditorTextHost.moc"
