// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/inspector/TagField.h"

#include "appearance/Contrast.h"
#include "appearance/Drawing.h"
#include "core/tags/Tags.h"
#include "shell/inspector/TagChip.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QListView>
#include <QPainter>
#include <QStringListModel>
#include <QStyledItemDelegate>

namespace orvane {

namespace {

constexpr int padding = 10;
constexpr int suggestionHeight = 28;

/// One tag of the list under the field.
class SuggestionRow final : public QStyledItemDelegate {
public:
    SuggestionRow(const Look& look, QObject* parent)
        : QStyledItemDelegate(parent)
        , m_look(look)
    {}
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override
    {
        return {option.fontMetrics.horizontalAdvance(index.data().toString()) + 2 * padding,
                suggestionHeight};
    }
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        const SurfaceTokens& t = m_look.tokens().on(Surface::Card);
        const bool current = option.state.testFlag(QStyle::State_Selected);
        if (current)
            drawPanel(*painter, option.rect.adjusted(2, 0, -2, 0), 6, t.selectedRow);
        const QRect words = option.rect.adjusted(padding, 0, -padding, 0);
        painter->setFont(option.font);
        painter->setPen(current ? t.textOnSelectedRow : t.text);
        painter->drawText(
            words, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
            option.fontMetrics.elidedText(index.data().toString(), Qt::ElideRight, words.width()));
    }

private:
    const Look& m_look;
};

/// The list under the field, with the edge of a card.
class SuggestionList final : public QListView {
public:
    explicit SuggestionList(const Look& look)
        : m_look(look)
    {
        setFrameShape(QFrame::NoFrame);
        setViewportMargins(1, 1, 1, 1);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }

protected:
    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            const SurfaceTokens& t = m_look.tokens().on(Surface::Card);
            QPainter painter(this);
            painter.fillRect(rect(), t.border);
            return true;
        }
        return QListView::event(event);
    }

private:
    const Look& m_look;
};

} // namespace

TagField::TagField(Look& look, QWidget* parent)
    : QLineEdit(parent)
    , m_look(look)
    , m_choices(new QStringListModel(this))
{
    setFrame(false);
    setTextStyle(this, TextStyle::Body);
    setTextMargins(padding - 2, 0, padding - 2, 0);
    setPlaceholderText(tr("Add a tag"));
    setAccessibleName(tr("Add a tag"));
    setMaxLength(int(longestTag));
    makeCompleter();
    connect(this, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (text.contains(u','))
            return commit();
        updateGeometry();
    });
    // Told before the completer looks for its matches. A choice that is only pointed at is no edit.
    connect(this, &QLineEdit::textEdited, this, [this](const QString& text) {
        m_choices->setStringList(m_choicesFor && !text.isEmpty() ? m_choicesFor(text)
                                                                 : QStringList());
    });
    connect(this, &QLineEdit::returnPressed, this, [this] {
        // With the list open the completer has its say first: it is in the middle of this key.
        if (completer()->popup()->isVisible())
            QMetaObject::invokeMethod(this, &TagField::commit, Qt::QueuedConnection);
        else
            commit();
    });
}

void TagField::makeCompleter()
{
    auto* completer = new QCompleter(m_choices, this);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    completer->setFilterMode(Qt::MatchContains);
    completer->setMaxVisibleItems(8);
    QAbstractItemView* popup = new SuggestionList(m_look);
    completer->setPopup(popup);
    popup->setItemDelegate(new SuggestionRow(m_look, popup));
    popup->setFont(font());
    popup->setAccessibleName(tr("Tags of this project"));
    const auto applyLook = [this, popup] {
        QPalette palette = m_look.palette(Surface::Card);
        palette.setColor(QPalette::Base, m_look.ground(Surface::Card));
        palette.setColor(QPalette::Highlight, m_look.tokens().on(Surface::Card).selectedRow);
        palette.setColor(QPalette::HighlightedText,
                         m_look.tokens().on(Surface::Card).textOnSelectedRow);
        popup->setPalette(palette);
    };
    applyLook();
    connect(&m_look, &Look::changed, popup, applyLook);
    setCompleter(completer);
    // Queued: the field itself takes over the chosen text first.
    connect(completer, qOverload<const QString&>(&QCompleter::activated), this, &TagField::commit,
            Qt::QueuedConnection);
}

QSize TagField::sizeHint() const
{
    // A layout asks dozens of times.
    if (m_hintFont != font() || m_hintText != text()) {
        m_hintFont = font();
        m_hintText = text();
        m_wordsWidth = qMax(fontMetrics().horizontalAdvance(placeholderText()),
                            fontMetrics().horizontalAdvance(text()));
    }
    return {m_wordsWidth + 2 * padding + 4, TagChip::chipHeight};
}

void TagField::commit()
{
    const QStringList entered = text().split(u',', Qt::SkipEmptyParts);
    clear();
    for (const QString& each : entered) {
        if (!each.trimmed().isEmpty())
            emit tagEntered(each.trimmed());
    }
}

void TagField::keyPressEvent(QKeyEvent* event)
{
    const bool atFront = cursorPosition() == 0 && !hasSelectedText();
    if (atFront &&
        (event->key() == Qt::Key_Left || (event->key() == Qt::Key_Backspace && text().isEmpty())))
        return emit leftAtFront();
    if (event->key() == Qt::Key_Escape && !text().isEmpty())
        return clear();
    QLineEdit::keyPressEvent(event);
}

void TagField::paintEvent(QPaintEvent* event)
{
    {
        QPainter painter(this);
        const SurfaceTokens& t = m_look.tokens().on(Surface::Inspector);
        if (hasFocus()) {
            drawFocusRing(painter, rect(), TagChip::chipHeight / 2.0, t.accent);
        } else {
            drawDashedEdge(painter, rect(), TagChip::chipHeight / 2.0,
                           blended(t.text, 0.22, t.ground));
        }
    }
    QLineEdit::paintEvent(event);
}

} // namespace orvane
