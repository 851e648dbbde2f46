// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/store/EditGateway.h"

#include "text/store/CellRules.h"
#include "text/store/Graphemes.h"
#include "text/store/TextStore.h"

#include <QScopedValueRollback>

namespace orvane {

namespace {

TextChange composed(const TextChange& first, const TextChange& second)
{
    const qsizetype start = std::min(first.location, second.location);
    const qsizetype middleEnd =
        std::max(first.location + first.lengthAfter, second.location + second.lengthBefore);
    return {start, middleEnd - start - first.lengthAfter + first.lengthBefore,
            middleEnd - start - second.lengthBefore + second.lengthAfter};
}

/// The document also counts the separator that closes it, which is no part of the text.
TextChange withinText(TextChange change, qsizetype lengthBefore, qsizetype lengthAfter)
{
    const qsizetype growth = lengthAfter - lengthBefore;
    change.location =
        std::clamp<qsizetype>(change.location, 0, std::min(lengthBefore, lengthAfter));
    change.lengthBefore = std::clamp<qsizetype>(
        change.lengthBefore, std::max<qsizetype>(0, -growth), lengthBefore - change.location);
    change.lengthAfter = change.lengthBefore + growth;
    return change;
}

bool partsPair(const TextStore& store, qsizetype position)
{
    return position > 0 && store.characterAt(position).isLowSurrogate() &&
           store.characterAt(position - 1).isHighSurrogate();
}

/// `range`; wider only where half a pair would be left behind.
TextRange withoutHalves(const TextStore& store, TextRange range)
{
    const bool partsFirst = partsPair(store, range.location);
    const bool partsLast = partsPair(store, range.end());
    if (range.isEmpty())
        return {range.location + (partsFirst ? 1 : 0), 0};
    return TextRange::between(range.location - (partsFirst ? 1 : 0),
                              range.end() + (partsLast ? 1 : 0));
}

QString normalized(QString text)
{
    text.replace(QLatin1StringView("\r\n"), QLatin1StringView("\n"));
    text.replace(u'\r', u'\n');
    return text;
}

} // namespace

namespace {

/// A text without a letter has no list, and nothing that indents one.
void leaveList(ParagraphStyle& style)
{
    if (style.textLists.isEmpty())
        return;
    style.textLists.clear();
    style.firstLineHeadIndent = style.headIndent = 0;
}

} // namespace

EditGateway::EditGateway(TextStore& store)
    : m_store(store)
{
    connect(&store.document(), &QTextDocument::contentsChange, this,
            &EditGateway::onContentsChange);
    connect(&store.document(), &QTextDocument::undoCommandAdded, this,
            &EditGateway::onUndoCommandAdded);
}

EditGateway::~EditGateway() = default;

void EditGateway::load(const AttributedString& content, const SharedCharacterStyle& typingStyle)
{
    Q_ASSERT(m_depth == 0);
    const qsizetype before = m_store.length();
    if (content.isEmpty()) {
        AttributedString plain = content;
        ParagraphStyle style = *plain.paragraphStyle(0);
        leaveList(style);
        plain.setParagraphStyle({0, 0}, style);
        m_store.setContent(plain);
    } else {
        m_store.setContent(content);
    }
    m_history.clear();
    m_state = {TextSelection(), typingStyle};
    emit textChanged({0, before, m_store.length()});
    emit selectionChanged();
    emit typingStyleChanged();
    emit historyChanged();
}

void EditGateway::loadPlainText(const QString& text)
{
    load(AttributedString(normalized(text)), {});
}

bool EditGateway::shouldChangeText(TextRange range, const QString& replacement) const
{
    return m_isEditable && (!m_filter || m_filter(range, replacement));
}

void EditGateway::setSelection(TextSelection selection)
{
    selection = aroundWholeGraphemes(m_store, selection.clampedTo(m_store.length()));
    if (selection == m_state.selection)
        return;
    m_state.selection = selection;
    m_history.close();
    emit selectionChanged();
    setTypingStyle(typingStyleAt(selection.range().location));
}

void EditGateway::setTypingStyle(const SharedCharacterStyle& style)
{
    if (m_open)
        m_open->setsTypingStyle = true;
    if (style == m_state.typingStyle)
        return;
    m_state.typingStyle = style;
    if (!m_open)
        emit typingStyleChanged();
}

SharedCharacterStyle EditGateway::typingStyleAt(qsizetype position) const
{
    if (m_store.isEmpty())
        return m_state.typingStyle;
    const TextRange paragraph = m_store.paragraphRange(position);
    // Typing goes on in the style of the character before, within the paragraph.
    const qsizetype from =
        std::min(position > paragraph.location ? position - 1 : position, m_store.length() - 1);
    SharedCharacterStyle found = m_store.characterStyle(from);
    const bool leavesLink =
        !found->link.isEmpty() &&
        (position >= m_store.length() || m_store.characterStyle(position)->link != found->link);
    if (!leavesLink && !found->hasAttachment() && found->chartBlockData.isEmpty())
        return found;
    CharacterStyle style = *found;
    style.attachment = {};
    style.chartBlockData.clear();
    if (leavesLink)
        style.link.clear();
    return style;
}

EditGateway::Coalescing EditGateway::coalescingOfTyping(const QString& text) const
{
    if (!m_state.selection.isEmpty() || text.contains(u'\n'))
        return Coalescing::none;
    const qsizetype caret = m_state.selection.position;
    const bool beginsWord = !text.front().isSpace() && m_store.characterAt(caret - 1).isSpace();
    return beginsWord ? Coalescing::none : Coalescing::withNewest;
}

bool EditGateway::type(const QString& typed)
{
    QString text = normalized(typed);
    if (text.isEmpty() || !shouldChangeText(m_state.selection.range(), text))
        return false;
    const QScopedValueRollback typing(m_textBeingTyped, text);
    return runEdit({tr("Typing"), EditKind::typing, m_state, {}, {}}, coalescingOfTyping(text),
                   EditEffect::changesText, [&](DocumentEditor& editor) {
                       const SharedCharacterStyle style = m_state.typingStyle;
                       const qsizetype at = removeParts(editor, m_state.selection.range());
                       if (cellRules::isInCell(m_store, at))
                           text.replace(u'\n', QChar(lineSeparator));
                       editor.replace({at, 0}, text, style);
                       editor.setSelection(TextSelection::caret(at + text.size()));
                       editor.setTypingStyle(style);
                   });
}

bool EditGateway::insertParagraph()
{
    return type(QStringLiteral("\n"));
}

bool EditGateway::insertLineBreak()
{
    return type(QString(QChar(lineSeparator)));
}

bool EditGateway::insert(const AttributedString& content, const QString& actionName)
{
    const TextRange selected = m_state.selection.range();
    if ((content.isEmpty() && selected.isEmpty()) || !shouldChangeText(selected, content.text()))
        return false;
    return runEdit({actionName, EditKind::other, m_state, {}, {}}, Coalescing::none,
                   EditEffect::changesText, [&](DocumentEditor& editor) {
                       const qsizetype at = removeParts(editor, selected);
                       const AttributedString fitted = cellRules::fitted(m_store, at, content);
                       editor.replace({at, 0}, fitted);
                       editor.setSelection(TextSelection::caret(at + fitted.length()));
                   });
}

bool EditGateway::remove(TextRange range, EditKind kind, const QString& actionName)
{
    range = withoutHalves(m_store, range.clampedTo(m_store.length()));
    if (range.isEmpty() || cellRules::removableParts(m_store, range).isEmpty() ||
        !shouldChangeText(range, QString()))
        return false;
    return runEdit({actionName, kind, m_state, {}, {}},
                   kind == EditKind::other ? Coalescing::none : Coalescing::withNewest,
                   EditEffect::changesText, [&](DocumentEditor& editor) {
                       const qsizetype at = removeParts(editor, range);
                       editor.setSelection(TextSelection::caret(at));
                   });
}

bool EditGateway::move(TextRange range, qsizetype position, const QString& actionName)
{
    const bool staysThere = position >= range.location && position <= range.end();
    const AttributedString content = m_store.attributedText(range);
    if (range.isEmpty() || staysThere || !shouldChangeText(range, QString()) ||
        !shouldChangeText({position, 0}, content.text()))
        return false;
    return runEdit({actionName, EditKind::other, m_state, {}, {}}, Coalescing::none,
                   EditEffect::changesText, [&](DocumentEditor& editor) {
                       const AttributedString fitted =
                           cellRules::fitted(m_store, position, content);
                       editor.replace({position, 0}, fitted);
                       TextRange source = range;
                       if (position < range.location)
                           source.location += fitted.length();
                       const qsizetype length = m_store.length();
                       removeParts(editor, source);
                       const qsizetype gone = length - m_store.length();
                       const qsizetype at = position < range.location ? position : position - gone;
                       editor.setSelection({at, at + fitted.length()});
                   });
}

qsizetype EditGateway::removeParts(DocumentEditor& editor, TextRange range)
{
    const QList<TextRange> parts = cellRules::removableParts(m_store, range);
    for (auto part = parts.crbegin(); part != parts.crend(); ++part)
        editor.remove(*part);
    // A table that goes at the very end leaves its last cell's paragraph, which nothing closes.
    const auto isCellAt = [this](qsizetype position) {
        return position >= 0 && cellRules::isInCell(m_store, position);
    };
    if (!parts.isEmpty() && range.location == m_store.length() && isCellAt(range.location)) {
        const QUuid table = m_store.paragraphStyle(range.location)->cell->table.id;
        const bool isAlone = !isCellAt(range.location - 1) ||
                             m_store.paragraphStyle(range.location - 1)->cell->table.id != table;
        if (isAlone && m_store.paragraphRange(range.location).location == range.location) {
            editor.modifyParagraphStyles({range.location, 0},
                                         [](ParagraphStyle& style) { style.cell.reset(); });
        }
    }
    if (!parts.isEmpty() && m_store.isEmpty())
        editor.modifyParagraphStyles({0, 0}, leaveList);
    return range.location;
}

bool EditGateway::performUndoableDocumentEdit(const QString& actionName, const Edit& edit,
                                              EditEffect effect)
{
    if (!m_isEditable)
        return false;
    return runEdit({actionName, EditKind::other, m_state, {}, {}}, Coalescing::none, effect, edit);
}

bool EditGateway::amendLastEdit(const QString& actionName, const Edit& edit)
{
    if (!m_isEditable)
        return false;
    HistoryEntry* newest = m_history.openEntry();
    const EditKind kind = newest ? newest->kind : EditKind::other;
    if (newest)
        newest->after = m_state;
    return runEdit({actionName, kind, m_state, {}, {}},
                   newest ? Coalescing::withNewest : Coalescing::none, EditEffect::unknown, edit);
}

void EditGateway::registerUndo(const QString& actionName, CustomStep step)
{
    if (m_open) {
        m_open->entry.steps.emplace_back(std::move(step));
        return;
    }
    HistoryEntry entry{actionName, EditKind::other, m_state, m_state, {}};
    entry.steps.emplace_back(std::move(step));
    m_history.push(std::move(entry));
    emit historyChanged();
}

void EditGateway::breakUndoCoalescing()
{
    m_history.close();
}

bool EditGateway::runEdit(HistoryEntry entry, Coalescing coalescing, EditEffect effect,
                          const Edit& edit)
{
    DocumentEditor editor(*this);
    if (m_depth > 0) {
        edit(editor);
        return true;
    }
    if (!passesGuard())
        return false;
    const HistoryEntry* newest = m_history.openEntry();
    m_open = OpenEdit{};
    m_open->joins = coalescing == Coalescing::withNewest && newest && newest->kind == entry.kind &&
                    newest->after == entry.before;
    m_open->effect = effect;
    m_open->entry = std::move(entry);
    m_pending = {};
    ++m_depth;
    // One block for all, so that the document counts it as one step and tells of one change.
    m_store.beginEdit();
    edit(editor);
    m_store.endEdit();
    --m_depth;
    return finishEdit();
}

bool EditGateway::finishEdit()
{
    const qsizetype growth = m_pending.change.lengthAfter - m_pending.change.lengthBefore;
    const qsizetype lengthBefore = m_store.length() - growth;
    if (m_pending.any && m_open->effect == EditEffect::unknown && m_open->touched &&
        m_store.attributedText(*m_open->touched) == m_open->before) {
        // Back where it began: the steps go, and nobody is told.
        std::erase_if(m_open->entry.steps, [this](const auto& step) {
            const auto* document = std::get_if<DocumentSteps>(&step);
            for (int i = 0; document && i < document->count; ++i)
                m_store.undoStep();
            return document != nullptr;
        });
        m_history.forgetRedo();
        m_pending = {};
    }
    OpenEdit done = std::move(*m_open);
    m_open.reset();
    keepGraphemesWhole();
    if (m_pending.any && !done.setsTypingStyle)
        m_state.typingStyle = typingStyleAt(m_state.selection.range().location);
    done.entry.after = m_state;
    const EditState before = done.entry.before;
    const bool isStep = !done.entry.steps.empty() || !(before == m_state);
    if (isStep && done.joins) {
        HistoryEntry& newest = *m_history.openEntry();
        newest.after = m_state;
        for (auto& step : done.entry.steps) {
            if (const auto* document = std::get_if<DocumentSteps>(&step))
                newest.addDocumentSteps(document->count);
            else
                newest.steps.push_back(std::move(step));
        }
    } else if (isStep) {
        m_history.push(std::move(done.entry));
    }
    announce(before, lengthBefore);
    if (isStep)
        emit historyChanged();
    return isStep;
}

void EditGateway::keepGraphemesWhole()
{
    const TextSelection whole = aroundWholeGraphemes(m_store, m_state.selection);
    // What an edit brings may join with what it stands beside, such as an accent with a letter.
    [[maybe_unused]] const auto isWhereChanged = [this](qsizetype position) {
        const TextChange& change = m_pending.change;
        return m_pending.any && position >= change.location &&
               position <= change.location + change.lengthAfter;
    };
    Q_ASSERT(whole.anchor == m_state.selection.anchor || isWhereChanged(m_state.selection.anchor));
    Q_ASSERT(whole.position == m_state.selection.position ||
             isWhereChanged(m_state.selection.position));
    m_state.selection = whole;
}

void EditGateway::announce(const EditState& before, qsizetype lengthBefore)
{
    if (m_pending.any)
        emit textChanged(withinText(m_pending.change, lengthBefore, m_store.length()));
    m_pending = {};
    if (!(before.selection == m_state.selection))
        emit selectionChanged();
    if (!(before.typingStyle == m_state.typingStyle))
        emit typingStyleChanged();
}

bool EditGateway::undo()
{
    if (!canUndo() || !m_isEditable || m_depth > 0 || !passesGuard())
        return false;
    restore(m_history.stepBack(), StepDirection::undo);
    return true;
}

bool EditGateway::redo()
{
    if (!canRedo() || !m_isEditable || m_depth > 0 || !passesGuard())
        return false;
    restore(m_history.stepForward(), StepDirection::redo);
    return true;
}

void EditGateway::restore(const HistoryEntry& step, StepDirection direction)
{
    const bool isUndo = direction == StepDirection::undo;
    // The history may let go of the step meanwhile.
    const HistoryEntry entry = step; // NOLINT(performance-unnecessary-copy-initialization)
    const EditState before = m_state;
    const qsizetype lengthBefore = m_store.length();
    m_pending = {};
    const auto run = [&](const auto& one) {
        if (const auto* custom = std::get_if<CustomStep>(&one)) {
            isUndo ? custom->undo() : custom->redo();
            return;
        }
        const QScopedValueRollback depth(m_depth, 1);
        m_store.beginEdit();
        for (int i = 0; i < std::get<DocumentSteps>(one).count; ++i)
            isUndo ? m_store.undoStep() : m_store.redoStep();
        m_store.endEdit();
    };
    if (isUndo)
        std::for_each(entry.steps.crbegin(), entry.steps.crend(), run);
    else
        std::for_each(entry.steps.cbegin(), entry.steps.cend(), run);
    m_state = isUndo ? entry.before : entry.after;
    announce(before, lengthBefore);
    emit historyChanged();
}

void EditGateway::onContentsChange(int from, int removed, int added)
{
    // Outside of edits it is an input method's text, which is no change of the text.
    if (m_depth == 0)
        return;
    const TextChange change{from, removed, added};
    m_pending.change = m_pending.any ? composed(m_pending.change, change) : change;
    m_pending.any = true;
}

void EditGateway::onUndoCommandAdded()
{
    if (m_open)
        m_open->entry.addDocumentSteps(1);
}

void EditGateway::rememberBefore(TextRange range)
{
    if (!m_open || m_open->effect != EditEffect::unknown)
        return;
    const TextRange wanted = m_store.paragraphsRange(range);
    if (!m_open->touched) {
        m_open->touched = wanted;
        m_open->before = m_store.attributedText(wanted);
        return;
    }
    TextRange& touched = *m_open->touched;
    if (wanted.location < touched.location) {
        m_open->before.insert(
            0, m_store.attributedText(TextRange::between(wanted.location, touched.location)));
        touched = TextRange::between(wanted.location, touched.end());
    }
    if (wanted.end() > touched.end()) {
        m_open->before.append(
            m_store.attributedText(TextRange::between(touched.end(), wanted.end())));
        touched = TextRange::between(touched.location, wanted.end());
    }
}

void EditGateway::noteReplaced(TextRange range, qsizetype newLength)
{
    const qsizetype growth = newLength - range.length;
    if (m_open && m_open->touched)
        m_open->touched->length += growth;
    const auto moved = [&](qsizetype position) {
        if (position <= range.location)
            return position;
        return position >= range.end() ? position + growth
                                       : std::min(position, range.location + newLength);
    };
    m_state.selection = {moved(m_state.selection.anchor), moved(m_state.selection.position)};
}

DocumentEditor::DocumentEditor(EditGateway& gateway)
    : m_gateway(gateway)
{}

const TextStore& DocumentEditor::store() const
{
    return m_gateway.m_store;
}

void DocumentEditor::replace(TextRange range, const AttributedString& insertion)
{
    if (range.isEmpty() && insertion.isEmpty())
        return;
    Q_ASSERT(withoutHalves(store(), range) == range);
    range = withoutHalves(store(), range);
    m_gateway.rememberBefore(range);
    m_gateway.m_store.replace(range, insertion);
    m_gateway.noteReplaced(range, insertion.length());
}

void DocumentEditor::replace(TextRange range, const QString& text,
                             const SharedCharacterStyle& style)
{
    if (range.isEmpty() && text.isEmpty())
        return;
    Q_ASSERT(withoutHalves(store(), range) == range);
    range = withoutHalves(store(), range);
    m_gateway.rememberBefore(range);
    m_gateway.m_store.replace(range, text, style);
    m_gateway.noteReplaced(range, text.size());
}

void DocumentEditor::remove(TextRange range)
{
    replace(range, AttributedString());
}

void DocumentEditor::setCharacterStyle(TextRange range, const SharedCharacterStyle& style)
{
    if (range.isEmpty())
        return;
    m_gateway.rememberBefore(range);
    m_gateway.m_store.setCharacterStyle(range, style);
}

void DocumentEditor::modifyCharacterStyles(TextRange range,
                                           const std::function<void(CharacterStyle&)>& change)
{
    std::vector<std::pair<TextRange, SharedCharacterStyle>> runs;
    store().forEachCharacterRun(range, [&](TextRange run, const SharedCharacterStyle& style) {
        CharacterStyle changed = *style;
        change(changed);
        if (!(changed == *style))
            runs.emplace_back(run, std::move(changed));
    });
    for (const auto& [run, style] : runs)
        setCharacterStyle(run, style);
}

void DocumentEditor::setParagraphStyle(TextRange range, const SharedParagraphStyle& style)
{
    m_gateway.rememberBefore(range);
    m_gateway.m_store.setParagraphStyle(range, style);
}

void DocumentEditor::modifyParagraphStyles(TextRange range,
                                           const std::function<void(ParagraphStyle&)>& change)
{
    m_gateway.rememberBefore(range);
    const TextRange paragraphs = store().paragraphsRange(range);
    qsizetype from = paragraphs.location;
    do {
        ParagraphStyle style = *store().paragraphStyle(from);
        change(style);
        m_gateway.m_store.setParagraphStyle({from, 0}, style);
        from = store().paragraphRange(from).end();
    } while (from < paragraphs.end());
}

TextSelection DocumentEditor::selection() const
{
    return m_gateway.m_state.selection;
}

void DocumentEditor::setSelection(TextSelection selection)
{
    m_gateway.m_state.selection = selection.clampedTo(store().length());
}

const SharedCharacterStyle& DocumentEditor::typingStyle() const
{
    return m_gateway.m_state.typingStyle;
}

void DocumentEditor::setTypingStyle(const SharedCharacterStyle& style)
{
    m_gateway.setTypingStyle(style);
}

} // namespace orvane
