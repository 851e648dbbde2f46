// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The part of EditorSession that holds the text of the draft: which one is shown in which mode, and
// what becomes of it in the draft.
#include "editor/formatting/EditorParagraphStyleRole.h"
#include "editor/session/EditorSession.h"
#include "editor/session/FormattingLoss.h"
#include "platform/Log.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QScopedValueRollback>

namespace orvane {

namespace {

/// The forms of shorter texts, in UTF-16 units, are made where they are needed: in less time than
/// it takes to hand them to another thread and back.
constexpr qsizetype longText = 50'000;

std::optional<Blob> blobOf(const std::optional<QByteArray>& bytes)
{
    return bytes ? std::optional(Blob(*bytes)) : std::nullopt;
}

/// The style that typing goes on with in `text`, which has just been loaded.
SharedCharacterStyle loadedTypingStyle(const EditGateway& text,
                                       const std::optional<TypingAttributes>& stored,
                                       const TextFont& base)
{
    CharacterStyle style;
    if (stored)
        style = stored->characters;
    else if (!text.store().isEmpty())
        style = *text.typingStyleAt(text.store().length());
    if (!style.font)
        style.font = base;
    return style;
}

} // namespace

void EditorSession::leaveText()
{
    if (!m_text)
        return;
    pullText();
    stopMakingForBound();
    // What is read first decides; the rest would only be held, and maybe unread.
    if (m_text->form == TextForm::plain)
        m_text->stored = {m_draft.bodyPlain, {}, {}};
    else if (m_draft.bodyRich)
        m_text->stored = {{}, {}, m_draft.bodyRich};
    else
        m_text->stored = {m_draft.bodyPlain, m_draft.bodyRTF, {}};
}

void EditorSession::showText()
{
    // Also where the text stays: its other forms may be back.
    m_wouldLoseFormatting.reset();
    const QUuid note = m_draft.noteID.value_or(QUuid());
    const StoredText stored = m_draft.text();
    const bool isSameText = m_text && m_text->noteID == note && m_text->form == form();
    const bool isCurrent = isSameText && m_text->stored.isSame(stored, form());
    if (isCurrent && m_shownMode == m_mode)
        return;
    emit textAboutToBeReplaced();
    std::unique_ptr<OpenText> before;
    if (!isCurrent) {
        before = std::move(m_text);
        m_text = m_texts.take(note, form(), stored);
        if (!m_text)
            m_text = loadText();
        // The forms of a note are as long as each other, so the place is the same.
        if (before && before->noteID == note)
            gateway().setSelection(before->gateway.selection());
        connectText();
    }
    m_shownMode = m_mode;
    emit textReplaced();
    if (before && !isSameText && !before->noteID.isNull())
        m_texts.keep(std::move(before));
}

std::unique_ptr<OpenText> EditorSession::loadText() const
{
    auto text = std::make_unique<OpenText>(m_draft.noteID.value_or(QUuid()), form());
    text->stored = m_draft.text();
    if (form() == TextForm::plain) {
        text->gateway.loadPlainText(m_draft.bodyPlain);
        return text;
    }
    const auto& payload = m_draft.editorTypingAttributesPayload;
    const auto typing = payload
                            ? NoteEditorTypingAttributesCodec::unarchive(payload->readOrNothing())
                            : std::nullopt;
    AttributedString content = readRichText(text->stored, m_baseFont);
    if (content.isEmpty() && typing)
        content.setParagraphStyle({0, 0}, typing->paragraph);
    text->gateway.load(content, {});
    text->gateway.setTypingStyle(loadedTypingStyle(text->gateway, typing, m_baseFont));
    return text;
}

void EditorSession::connectText()
{
    for (const QMetaObject::Connection& connection : m_textConnections)
        disconnect(connection);
    const auto typing = [this] {
        if (gateway().selection().isEmpty())
            emitTypingAttributesChange();
    };
    m_textConnections = {
        connect(&gateway(), &EditGateway::textChanged, this, &EditorSession::onTextChanged),
        connect(&gateway(), &EditGateway::selectionChanged, this, typing),
        connect(&gateway(), &EditGateway::typingStyleChanged, this, typing),
    };
    gateway().setEditGuard([this] { return allowsEdit(); });
    m_behind = {};
    m_lastTypingAttributes = typingAttributes();
    m_lastEmittedTypingAttributes =
        NoteEditorTypingAttributesCodec::archive(m_lastTypingAttributes);
}

void EditorSession::onTextChanged(const TextChange& change)
{
    if (!m_draft.noteID)
        return;
    if (m_text->form == TextForm::rich) {
        m_behind |= DraftPart::RichForms;
        ++m_generation;
    } else {
        eraseRichForms(change);
    }
    m_behind |= DraftPart::Plain;
    markDirty();
    log("contentChanged");
    if (change.lengthAfter >= writtenBeforeShown &&
        autosaveEnabledSetting.read(m_appState.services().defaults)) {
        (void)writeDraft(*m_draft.noteID);
        emit longTextWritten();
    }
    emitTypingAttributesChange();
    emit bodyEdited();
}

void EditorSession::eraseRichForms(const TextChange& change)
{
    if (!m_draft.bodyRTF && !m_draft.bodyRich && !m_draft.editorTypingAttributesPayload &&
        !m_draft.shapesPayload)
        return;
    if (change.lengthBefore == change.lengthAfter &&
        plainForm(m_text->store.text()) == m_draft.bodyPlain)
        return;
    // Plain text can't carry what these say, so they no longer describe the note.
    m_draft.bodyRTF.reset();
    m_draft.bodyRich.reset();
    m_draft.editorTypingAttributesPayload.reset();
    m_draft.shapesPayload.reset();
}

TypingAttributes EditorSession::typingAttributes() const
{
    const EditGateway& text = m_text->gateway;
    return {*text.typingStyle(), *m_text->store.paragraphStyle(text.selection().range().location)};
}

void EditorSession::emitTypingAttributesChange()
{
    if (m_activity == Activity::mergingFont || m_text->form != TextForm::rich || !isEditable())
        return;
    const TypingAttributes now = typingAttributes();
    if (now == m_lastTypingAttributes)
        return;
    m_lastTypingAttributes = now;
    const auto bytes = NoteEditorTypingAttributesCodec::archive(now);
    if (bytes == m_lastEmittedTypingAttributes)
        return;
    m_lastEmittedTypingAttributes = bytes;
    const auto payload = bytes ? std::optional(Blob(*bytes)) : std::nullopt;
    if (payload == m_draft.editorTypingAttributesPayload)
        return;
    m_draft.editorTypingAttributesPayload = payload;
    markDirty();
    log("typingAttributesChanged");
}

void EditorSession::mergeTypingFont()
{
    if (m_text->form != TextForm::rich || !gateway().selection().isEmpty())
        return;
    const QScopedValueRollback merging(m_activity, Activity::mergingFont);
    CharacterStyle style = *gateway().typingStyle();
    if (style.font && style.font->family == m_baseFont.family &&
        std::abs(style.font->size - m_baseFont.size) <= 0.01)
        return;
    style.font = m_baseFont;
    gateway().setTypingStyle(style);
}

void EditorSession::pullPlain()
{
    if (!m_behind.testFlag(DraftPart::Plain))
        return;
    m_behind.setFlag(DraftPart::Plain, false);
    m_draft.bodyPlain = plainForm(m_text->store.text());
}

void EditorSession::pullText()
{
    pullPlain();
    if (!m_behind.testFlag(DraftPart::RichForms))
        return;
    m_behind.setFlag(DraftPart::RichForms, false);
    RichForms forms;
    if (m_formsMaker.hasStarted(m_generation))
        forms = m_formsMaker.take();
    else if (isLong())
        forms = m_formsMaker.makeNow(m_text->store.snapshot(), headingSizes());
    else
        forms = richForms(m_text->store.attributedText(), headingSizes());
    m_draft.bodyRTF = blobOf(forms.rtf);
    m_draft.bodyRich = blobOf(forms.rich);
    m_draft.images = noteImages(forms.images);
}

NoteImages EditorSession::noteImages(const QList<ImageFile>& files)
{
    const NoteRecord* note = m_appState.note(*m_draft.noteID);
    const NoteImages known = note ? note->images.value_or(NoteImages()) : NoteImages();
    NoteImages images;
    for (const ImageFile& file : files) {
        const auto at = std::ranges::find(known, file.hash(), &NoteImage::hash);
        const auto bytes = file.bytes();
        if (bytes)
            m_imagesInMemory.append(file);
        if (at != known.end())
            images.append(*at);
        else if (bytes)
            images.append({file.hash(), Blob(*bytes)});
    }
    return images;
}

// What is stored by now needn't be in memory a second time.
void EditorSession::releaseImages(const QUuid& noteID)
{
    const NoteRecord* note = m_appState.note(noteID);
    for (const ImageFile& file : std::exchange(m_imagesInMemory, {})) {
        const auto images = note ? note->images.value_or(NoteImages()) : NoteImages();
        const auto at = std::ranges::find(images, file.hash(), &NoteImage::hash);
        if (at != images.end() && !at->bytes.isLoaded())
            file.release();
    }
}

HeadingSizes EditorSession::headingSizes() const
{
    HeadingSizes sizes = orvane::headingSizes(m_appState.services().defaults);
    sizes.body = m_baseFont.size;
    return sizes;
}

bool EditorSession::isLong() const
{
    return m_text->store.length() > longText;
}

bool EditorSession::needsLongForms() const
{
    return m_behind.testFlag(DraftPart::RichForms) && isLong();
}

void EditorSession::prepareForms()
{
    // What is to be written whatever is typed isn't given up for what was typed.
    const bool isKept = std::holds_alternative<BoundState::MakingForms>(m_bound);
    if (needsLongForms() && !m_formsMaker.hasStarted(m_generation) && !isKept)
        m_formsMaker.start(m_generation, m_text->store.snapshot(), headingSizes());
}

void EditorSession::formsFinished(quint64 generation)
{
    const auto* making = std::get_if<BoundState::MakingForms>(&m_bound);
    const bool isForBound = making && making->generation == generation;
    if (isForBound)
        stopMakingForBound();
    if (generation == m_generation) {
        if (isForBound || std::holds_alternative<AutosaveState::AwaitingForms>(m_autosave))
            runAutosaveToDisk();
        return;
    }
    if (!isForBound)
        return;
    // They may have been taken meanwhile.
    if (m_formsMaker.hasStarted(generation))
        writeForms(m_formsMaker.take());
    else
        boundUnsaved();
}

void EditorSession::writeForms(const RichForms& forms)
{
    NoteContent content = m_draft.content();
    content.body = forms.plain;
    content.bodyRTF = blobOf(forms.rtf);
    content.richContentPayload = blobOf(forms.rich);
    content.images = noteImages(forms.images);
    (void)write(*m_draft.noteID, content);
    log("autosave.bound");
    if (std::holds_alternative<AutosaveState::AwaitingForms>(m_autosave))
        return runAutosaveToDisk();
    if (!std::holds_alternative<BoundState::Running>(m_bound))
        boundUnsaved();
}

bool EditorSession::allowsEdit()
{
    if (m_activity == Activity::asking || !isEditable())
        return false;
    if (m_text->form == TextForm::rich)
        return true;
    if (!m_wouldLoseFormatting)
        m_wouldLoseFormatting = formattingLossOf(m_draft).any();
    return !*m_wouldLoseFormatting || acceptsFormattingLoss();
}

bool EditorSession::acceptsFormattingLoss()
{
    const QScopedValueRollback asking(m_activity, Activity::asking);
    const OpenText* asked = m_text.get();
    const QString first = gateway().textBeingTyped();
    Questions& questions = m_appState.services().questions;
    const Answer answer = questions.ask(formattingLossQuestion(formattingLossOf(m_draft), m_mode));
    const bool accepts =
        answer.button == 0 && m_text.get() == asked && m_draft.noteID && keepsFormattedVersion();
    if (accepts)
        typeLater(answer.typed);
    else if (!answer.typed.isEmpty()) // the one key that led to the question is what was answered
        offerWords(first + answer.typed);
    return accepts;
}

bool EditorSession::keepsFormattedVersion()
{
    const QUuid note = *m_draft.noteID;
    flushDraftToDisk(note);
    if (m_refusal)
        return false;
    if (!m_appState.appendVersionSnapshot(note, QString(beforeFormattingLossLabel))) {
        m_appState.services().questions.ask(versionNotKeptMessage());
        return false;
    }
    m_wouldLoseFormatting = false;
    return true;
}

/// Behind what is being typed now, and before the next key.
void EditorSession::typeLater(const QString& words)
{
    if (words.isEmpty())
        return;
    const auto type = [this, words, text = m_text.get()] {
        if (m_text.get() == text)
            gateway().type(words);
    };
    QMetaObject::invokeMethod(this, type, Qt::QueuedConnection);
}

void EditorSession::offerWords(QString words)
{
    const auto offer = [this, words, note = m_draft.noteID]() mutable {
        const Answer answer = m_appState.services().questions.ask(typedWordsQuestion(words));
        words += answer.typed;
        if (answer.button == TypedWordsAnswer::dropWords)
            return;
        if (answer.button == TypedWordsAnswer::writeRich && m_draft.noteID == note) {
            setMode(EditorMode::richText);
            if (gateway().type(words))
                return;
        }
        QGuiApplication::clipboard()->setText(words);
    };
    QMetaObject::invokeMethod(this, offer, Qt::QueuedConnection);
}

} // namespace orvane
