// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/pane/WritingTools.h"

#include "commands/EditorFormatNotifications.h"
#include "commands/KeyTable.h"
#include "editor/page/PageSheet.h"
#include "editor/pane/StripMenuButton.h"
#include "editor/spelling/SpellingMenu.h"
#include "editor/view/EditorView.h"
#include "text/store/TextStore.h"

#include <QMenu>
#include <QShortcut>

namespace orvane {

namespace {

/// A longer selection is a place to work in and no query.
constexpr qsizetype longestSuggestion = 200;

QString suggestedQuery(const EditorView& view)
{
    const TextRange selection = view.selection().range();
    if (selection.length > longestSuggestion)
        return {};
    const QString text = view.store().text(selection);
    const bool isOneLine = std::none_of(text.begin(), text.end(), [](QChar c) {
        return c == u'\n' || c == QChar::LineSeparator || c == QChar::ObjectReplacementCharacter;
    });
    return isOneLine ? text : QString();
}

} // namespace

WritingTools::WritingTools(EditorView& view, WritingLibrary& library, const Services& services,
                           Look& look, QWidget& pane)
    : m_view(view)
    , m_languages(library.spelling)
    , m_look(look)
    , m_defaults(services.defaults)
    , m_commands(view, services.notifications)
    , m_behaviours(view, services)
    , m_find(view, services.beeper)
    , m_lists(view, library.bullets)
    , m_formatting(view, m_commands, m_lists, library.spelling, services)
    , m_tables(view, m_commands, m_lists, look, services)
    , m_images(view, m_commands, look, services)
    , m_spelling(view, library.spelling)
    , m_strip(new FindStrip(m_find, look, &pane))
    , m_bar(new FormattingBarSlot(services, library.bullets, look, &pane))
    , m_language(new StripMenuButton(&pane))
{
    m_language->setFill([this](QMenu& menu) {
        if (m_note)
            fillSpellingMenu(menu, m_languages, *m_note);
    });
    m_formatting.setTableSource([this] { return m_tables.snapshot(); });
    connect(&m_languages, &Spelling::settingsChanged, this, &WritingTools::showLanguage);
    connect(m_strip, &FindStrip::dismissed, &m_view,
            [this] { m_view.setFocus(Qt::OtherFocusReason); });
    connect(m_bar, &FormattingBarSlot::left, &m_view,
            [this] { m_view.setFocus(Qt::OtherFocusReason); });
    connect(m_strip, &FindStrip::undoRequested, &m_view, &EditorView::undo);
    connect(m_strip, &FindStrip::redoRequested, &m_view, &EditorView::redo);
    connect(&look, &Look::changed, this, &WritingTools::applyLook);
    connect(&m_defaults, &UserDefaults::changed, this, [this](const QString& key) {
        if (key == pageViewEnabledSetting.keyText())
            applyLook();
    });
    m_formatting.setSelectedImage([this] { return m_images.selectedInfo(); });
    connect(&m_images, &ImageTools::infoChanged, this, [this] { m_formatting.refreshSnapshot(); });
    observeCommands(services.notifications);
    makeKeys(pane, services.notifications);
    applyLook();
}

void WritingTools::makeKeys(QWidget& pane, NotificationCenter& notifications)
{
    const auto addKey = [&](FixedKey key, auto act) {
        auto* shortcut = new QShortcut(keySequence(key), &pane);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, act);
    };
    addKey(FixedKey::findAndReplace, [this] { openFind(FindStrip::Controls::findAndReplace); });
    addKey(FixedKey::findNext, [this] { findAgain(FindDirection::forward); });
    addKey(FixedKey::findPrevious, [this] { findAgain(FindDirection::backward); });
    addKey(FixedKey::pastePlain, [this] { m_view.pastePlain(); });
    for (const FixedKey key : {FixedKey::superscript, FixedKey::subscript})
        addKey(key, [&notifications, key] { keyRow(key).command.post(notifications); });
}

void WritingTools::observeCommands(NotificationCenter& notifications)
{
    m_observations.push_back(notifications.observe(AppCommandEvents::toggleDocumentFind,
                                                   [this](const NoPayload&) { toggleFind(); }));
    observeListCommands();
    m_commands.setRefused([this](const CommandReceiver::Refused& refused) {
        if (m_mode == EditorMode::plainText)
            emit formattingRefused(refused.name, refused.act);
    });
}

void WritingTools::observeListCommands()
{
    namespace Format = EditorFormatNotifications;
    constexpr auto rich = CommandScope::richNotes;
    m_commands.observe(Format::bulletList, rich,
                       [this](const CommandTarget&) { m_lists.toggleList(EditorListStyle::disc); });
    m_commands.observe(Format::numberedList, rich, [this](const CommandTarget&) {
        m_lists.toggleList(EditorListStyle::decimal);
    });
    m_commands.observe(Format::setListStyle, rich, [this](const ListStyleChoice& choice) {
        if (const auto style = fromRawValue<EditorListStyle>(choice.style))
            m_lists.toggleList(*style);
    });
    m_commands.observe(Format::setCustomBullet, rich, [this](const CustomBulletChoice& choice) {
        m_lists.toggleCustomBullet(choice.character, choice.color);
    });
    m_commands.observe(Format::removeCustomBullet, rich,
                       [this](const CommandTarget&) { m_lists.removeAnyCustomBullet(); });
}

void WritingTools::leaveText()
{
    m_spelling.setNote(std::nullopt);
    m_spelling.setCodeSource(nullptr);
    m_markdown.reset();
}

void WritingTools::prepareText(EditGateway& text, EditorMode mode)
{
    leaveText();
    m_mode = mode;
    if (mode != EditorMode::markdown)
        return;
    const bool isShown = &text == &m_view.gateway();
    const bool showsCaret = isShown && isCaretInSight();
    m_markdown = std::make_unique<MarkdownHighlighting>(
        m_view, text, MarkdownSyntaxHighlighter::Theme::of(writingTokens(m_look, m_defaults)));
    m_spelling.setCodeSource([this](const QTextBlock& block) { return m_markdown->codeIn(block); });
    if (showsCaret && !isCaretInSight())
        m_view.ensureCaretVisible();
}

bool WritingTools::isCaretInSight() const
{
    const QRectF caret = m_view.caretRect();
    return caret.bottom() > 0 && caret.bottom() <= m_view.viewport()->height();
}

void WritingTools::showText(const std::optional<QUuid>& note)
{
    m_note = note;
    if (note && m_view.store().isEmpty() && m_view.isEditable())
        m_languages.beginNote(*note);
    m_commands.setNote(note, m_mode);
    m_behaviours.showText(note, m_mode);
    m_lists.setForm(m_mode == EditorMode::richText ? ListForm::rich : ListForm::plain);
    m_bar->showNote(note, m_mode);
    m_images.showText();
    m_formatting.showText();
    m_find.refresh();
    m_spelling.setNote(note);
    showLanguage();
}

void WritingTools::showLanguage()
{
    m_language->setVisible(m_note && !m_languages.dictionaries().isEmpty());
    if (m_note)
        m_language->setChoice(tr("Language of the note"), spellingSummary(m_languages, *m_note));
}

void WritingTools::toggleFind()
{
    if (m_strip->hasKeyboard())
        m_strip->dismiss();
    else
        openFind(FindStrip::Controls::find);
}

void WritingTools::openFind(FindStrip::Controls controls)
{
    if (!m_note || !m_view.isVisible())
        return;
    const bool isInText = !m_strip->hasKeyboard();
    m_strip->open(controls, isInText ? suggestedQuery(m_view) : QString());
}

void WritingTools::findAgain(FindDirection direction)
{
    if (m_find.query().isEmpty())
        openFind(FindStrip::Controls::find);
    else
        m_strip->find(direction);
}

void WritingTools::applyLook()
{
    m_formatting.lookChanged();
    if (m_markdown)
        m_markdown->setTheme(
            MarkdownSyntaxHighlighter::Theme::of(writingTokens(m_look, m_defaults)));
}

} // namespace orvane
