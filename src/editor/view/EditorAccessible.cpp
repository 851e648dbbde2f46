// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/view/EditorAccessible.h"

#include "editor/view/EditorView.h"
#include "text/store/TextStore.h"
#include "text/store/TextUnits.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QTextBoundaryFinder>

namespace orvane {

namespace {

class EditorAccessible : public QAccessibleWidget,
                         public QAccessibleTextInterface,
                         public QAccessibleEditableTextInterface {
public:
    explicit EditorAccessible(EditorView* view)
        : QAccessibleWidget(view, QAccessible::EditableText)
    {}

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TextInterface)
            return static_cast<QAccessibleTextInterface*>(this);
        if (type == QAccessible::EditableTextInterface)
            return static_cast<QAccessibleEditableTextInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.multiLine = true;
        state.selectableText = true;
        state.editable = view().isEditable();
        state.readOnly = !state.editable;
        state.focusable = true;
        return state;
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? store().text() : QAccessibleWidget::text(kind);
    }

    // QAccessibleTextInterface

    void selection(int index, int* start, int* end) const override
    {
        const TextRange range = index == 0 ? view().selection().range() : TextRange{};
        *start = int(range.location);
        *end = int(range.end());
    }
    [[nodiscard]] int selectionCount() const override
    {
        return view().selection().isEmpty() ? 0 : 1;
    }
    void addSelection(int start, int end) override { setSelection(0, start, end); }
    void removeSelection(int index) override
    {
        if (index == 0)
            view().setSelection(TextSelection::caret(view().selection().position));
    }
    void setSelection(int index, int start, int end) override
    {
        if (index == 0)
            view().setSelection({start, end});
    }

    [[nodiscard]] int cursorPosition() const override { return int(view().selection().position); }
    void setCursorPosition(int position) override
    {
        view().setSelection(TextSelection::caret(position));
    }

    [[nodiscard]] int characterCount() const override { return int(store().length()); }
    [[nodiscard]] QString text(int start, int end) const override
    {
        return store().text(within(start, end));
    }

    QString textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                             int* end) const override
    {
        const TextRange here = unitAt(offset, boundary);
        return told(here.location > 0 ? unitAt(here.location - 1, boundary)
                                      : TextRange{here.location, 0},
                    start, end);
    }
    QString textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                            int* end) const override
    {
        const TextRange here = unitAt(offset, boundary);
        return told(here.end() < store().length() ? unitAt(here.end(), boundary)
                                                  : TextRange{here.end(), 0},
                    start, end);
    }
    QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                         int* end) const override
    {
        return told(unitAt(offset, boundary), start, end);
    }

    [[nodiscard]] QRect characterRect(int offset) const override
    {
        ParagraphLayout& layout = view().layout();
        const auto position = int(clamped(offset));
        const QList<QRectF> rects = layout.rectsOf(within(position, position + 1));
        QRectF rect =
            view().toViewport(rects.isEmpty() ? layout.caretRect(position) : rects.first());
        rect.setWidth(std::max(rect.width(), 1.0));
        const QRect inView = rect.toAlignedRect();
        return {view().viewport()->mapToGlobal(inView.topLeft()), inView.size()};
    }
    [[nodiscard]] int offsetAtPoint(const QPoint& point) const override
    {
        return int(view().positionAt(view().viewport()->mapFromGlobal(point)));
    }
    void scrollToSubstring(int start, int end) override
    {
        view().scrollToRange(within(start, end));
    }

    QString attributes(int offset, int* start, int* end) const override
    {
        const qsizetype length = store().length();
        *start = *end = int(clamped(offset));
        if (length == 0)
            return {};
        const qsizetype position = std::min(clamped(offset), length - 1);
        TextRange run{position, 1};
        const SharedCharacterStyle style = store().characterStyle(position);
        // Equal neighbours within the paragraph belong to the run.
        store().forEachCharacterRun(
            store().paragraphRange(position),
            [&](TextRange part, const SharedCharacterStyle& other) {
                if (!(other == style))
                    return;
                if (part.end() >= run.location && part.location <= run.end()) {
                    run = TextRange::between(std::min(run.location, part.location),
                                             std::max(run.end(), part.end()));
                }
            });
        *start = int(run.location);
        *end = int(run.end());
        return described(*style, *store().paragraphStyle(position));
    }

    // QAccessibleEditableTextInterface

    void deleteText(int start, int end) override
    {
        if (view().isEditable())
            view().gateway().remove(within(start, end), EditKind::other, EditorView::tr("Delete"));
    }
    void insertText(int offset, const QString& text) override { replaceText(offset, offset, text); }
    void replaceText(int start, int end, const QString& text) override
    {
        if (!view().isEditable())
            return;
        view().setSelection(TextSelection::of(within(start, end)));
        view().gateway().breakUndoCoalescing();
        view().gateway().type(text);
    }

private:
    [[nodiscard]] EditorView& view() const { return *static_cast<EditorView*>(widget()); }
    [[nodiscard]] const TextStore& store() const { return view().store(); }
    [[nodiscard]] qsizetype clamped(int offset) const
    {
        // -1 stands for the end and -2 for the caret.
        if (offset == -2)
            return view().selection().position;
        return offset < 0 ? store().length() : std::min<qsizetype>(offset, store().length());
    }
    [[nodiscard]] TextRange within(int start, int end) const
    {
        const qsizetype from = clamped(start);
        return TextRange::between(from, std::max(from, clamped(end)));
    }
    QString told(TextRange range, int* start, int* end) const
    {
        *start = int(range.location);
        *end = int(range.end());
        return store().text(range);
    }

    /// The unit that holds `offset`, found within its paragraph: the text may be very long.
    [[nodiscard]] TextRange unitAt(qsizetype offset, QAccessible::TextBoundaryType boundary) const
    {
        const qsizetype position = clamped(int(offset));
        switch (boundary) {
        case QAccessible::CharBoundary:
            return TextRange::between(position, nextCharacter(store(), position));
        case QAccessible::WordBoundary:
            return wordAt(store(), position);
        case QAccessible::SentenceBoundary:
            return sentenceAt(position);
        case QAccessible::ParagraphBoundary:
            return store().paragraphRange(position);
        case QAccessible::LineBoundary:
            return view().layout().lineAt(int(position)).range;
        case QAccessible::NoBoundary:
            break;
        }
        return store().fullRange();
    }
    [[nodiscard]] TextRange sentenceAt(qsizetype position) const
    {
        const TextRange paragraph = paragraphTextAt(store(), position);
        if (paragraph.isEmpty())
            return store().paragraphRange(position);
        TextRange sentence = unitAround(store(), std::min(position, paragraph.end() - 1),
                                        QTextBoundaryFinder::Sentence);
        // The last one has the paragraph's end with it.
        if (sentence.end() == paragraph.end())
            sentence.length = store().paragraphRange(position).end() - sentence.location;
        return sentence;
    }

    [[nodiscard]] QString described(const CharacterStyle& style,
                                    const ParagraphStyle& paragraph) const
    {
        using namespace Qt::StringLiterals;
        const TextFont& font = style.font ? *style.font : view().layout().baseFont();
        const auto color = [](const QColor& value) {
            return u"rgb(%1,%2,%3)"_s.arg(value.red()).arg(value.green()).arg(value.blue());
        };
        const QColor ink =
            style.foreground ? style.foreground->toQColor() : view().look().text.text;
        QString text;
        const auto add = [&](const QString& name, const QString& value) {
            // Names and values are those of IAccessible2, in which these signs are escaped.
            QString escaped = value;
            for (const QChar sign : u"\\:,=;"_s)
                escaped.replace(sign, QString(u'\\') + sign);
            text += name + u':' + escaped + u';';
        };
        add(u"font-family"_s, font.family);
        add(u"font-size"_s, QString::number(font.size) + u"pt"_s);
        add(u"font-weight"_s, QString::number(font.weight));
        add(u"font-style"_s, font.italic ? u"italic"_s : u"normal"_s);
        if (style.underline != TextLine::none)
            add(u"text-underline-style"_s, u"solid"_s);
        if (style.strikethrough != TextLine::none)
            add(u"text-line-through-type"_s, u"single"_s);
        if (style.baselineShift != BaselineShift::none)
            add(u"text-position"_s,
                style.baselineShift == BaselineShift::superscript ? u"super"_s : u"sub"_s);
        add(u"color"_s, color(ink));
        if (style.background)
            add(u"background-color"_s, color(style.background->toQColor()));
        static const QStringList alignments{u"left"_s, u"left"_s, u"center"_s, u"right"_s,
                                            u"justify"_s};
        add(u"text-align"_s, alignments[int(paragraph.alignment)]);
        return text;
    }
};

QAccessibleInterface* make(const QString& className, QObject* object)
{
    // Subclasses ask under their own name first and under this one at last.
    if (className != QLatin1StringView(EditorView::staticMetaObject.className()))
        return nullptr;
    auto* view = qobject_cast<EditorView*>(object);
    return view ? new EditorAccessible(view) : nullptr;
}

} // namespace

namespace editorAccessible {

void install()
{
    static const bool once = [] {
        QAccessible::installFactory(make);
        return true;
    }();
    Q_UNUSED(once);
}

void announceChange(EditorView& view, const TextChange& change)
{
    if (!QAccessible::isActive())
        return;
    // What was there is gone by now; its length is known.
    constexpr qsizetype mostTold = 10'000;
    const auto at = int(change.location);
    const QString removed(std::min(change.lengthBefore, mostTold), u' ');
    const QString inserted =
        view.store().text({change.location, std::min(change.lengthAfter, mostTold)});
    if (change.lengthBefore > 0 && change.lengthAfter > 0) {
        QAccessibleTextUpdateEvent event(&view, at, removed, inserted);
        QAccessible::updateAccessibility(&event);
    } else if (change.lengthAfter > 0) {
        QAccessibleTextInsertEvent event(&view, at, inserted);
        QAccessible::updateAccessibility(&event);
    } else if (change.lengthBefore > 0) {
        QAccessibleTextRemoveEvent event(&view, at, removed);
        QAccessible::updateAccessibility(&event);
    }
}

void announceSelection(EditorView& view)
{
    if (!QAccessible::isActive())
        return;
    const TextSelection selection = view.selection();
    QAccessibleTextCursorEvent caret(&view, int(selection.position));
    QAccessible::updateAccessibility(&caret);
    QAccessibleTextSelectionEvent event(&view, int(selection.range().location),
                                        int(selection.range().end()));
    event.setCursorPosition(int(selection.position));
    QAccessible::updateAccessibility(&event);
}

} // namespace editorAccessible

} // namespace orvane
