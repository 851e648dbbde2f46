// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/formatting/FormattingTools.h"

#include "editor/pane/CommandReceiver.h"
#include "editor/spelling/Spelling.h"
#include "editor/view/EditorView.h"

namespace orvane {

namespace Format = EditorFormatNotifications;

FormattingTools::FormattingTools(EditorView& view, CommandReceiver& commands,
                                 const ListEditing& lists, const Spelling& languages,
                                 const Services& services)
    : m_view(view)
    , m_commands(commands)
    , m_languages(languages)
    , m_editing(view, services.defaults)
    , m_snapshots(view, lists, services.defaults, services.notifications)
{
    observeCharacterCommands();
    observeParagraphCommands();
    observeCaseCommands();
    view.addExtension(this, ExtensionPriority::formatting);
}

FormattingTools::~FormattingTools()
{
    m_view.removeExtension(this);
}

bool FormattingTools::command(EditAction command)
{
    return command == EditAction::insertNewline && m_view.isEditable() &&
           m_commands.mode() == EditorMode::richText && m_editing.beginBodyAfterHeading();
}

void FormattingTools::showText()
{
    const bool isRich = m_commands.mode() == EditorMode::richText;
    m_snapshots.setNote(isRich ? m_commands.note() : std::nullopt);
}

void FormattingTools::observeCharacterCommands()
{
    constexpr auto rich = CommandScope::richNotes;
    m_commands.observe(Format::bold, rich, [this](const CommandTarget&) {
        m_editing.toggleFontTrait(FontTrait::bold);
    });
    m_commands.observe(Format::italic, rich, [this](const CommandTarget&) {
        m_editing.toggleFontTrait(FontTrait::italic);
    });
    m_commands.observe(Format::underline, rich,
                       [this](const CommandTarget&) { m_editing.toggleUnderline(); });
    m_commands.observe(Format::strikethrough, rich,
                       [this](const CommandTarget&) { m_editing.toggleStrikethrough(); });
    m_commands.observe(Format::superscript, rich, [this](const CommandTarget&) {
        m_editing.toggleBaselineShift(BaselineShift::superscript);
    });
    m_commands.observe(Format::subscript, rich, [this](const CommandTarget&) {
        m_editing.toggleBaselineShift(BaselineShift::subscript);
    });
    m_commands.observe(Format::setFont, rich, [this](const FontChoice& choice) {
        m_editing.applyRequestedFont(choice.fontName, choice.fontSize);
    });
    m_commands.observe(Format::foregroundNSColor, rich, [this](const ColorChoice& choice) {
        m_editing.applyForeground(choice.color);
    });
    m_commands.observe(Format::highlightNSColor, rich, [this](const ColorChoice& choice) {
        m_editing.applyHighlight(choice.color);
    });
}

void FormattingTools::observeParagraphCommands()
{
    using Role = EditorParagraphStyleRole;
    constexpr auto rich = CommandScope::richNotes;
    const auto observeAlignment = [this](const Notification<CommandTarget>& command,
                                         TextAlignment alignment) {
        m_commands.observe(command, rich, [this, alignment](const CommandTarget&) {
            m_editing.setAlignment(alignment);
        });
    };
    observeAlignment(Format::alignLeft, TextAlignment::left);
    observeAlignment(Format::alignCenter, TextAlignment::center);
    observeAlignment(Format::alignRight, TextAlignment::right);
    observeAlignment(Format::alignJustified, TextAlignment::justified);
    const auto observeRole = [this](const Notification<CommandTarget>& command, Role role) {
        m_commands.observe(command, rich, [this, role](const CommandTarget&) {
            m_editing.applyParagraphRole(role);
        });
    };
    observeRole(Format::paragraphBody, Role::body);
    observeRole(AppCommandEvents::applyHeading1, Role::heading1);
    observeRole(AppCommandEvents::applyHeading2, Role::heading2);
    observeRole(AppCommandEvents::applyHeading3, Role::heading3);
    observeRole(AppCommandEvents::applyHeading4, Role::heading4);
    observeRole(AppCommandEvents::applyHeading5, Role::heading5);
    observeRole(AppCommandEvents::applyHeading6, Role::heading6);
    m_commands.observe(Format::paragraphHeading, rich, [this](const ParagraphRoleChoice& choice) {
        m_editing.applyParagraphRole(
            fromRawValue<EditorParagraphStyleRole>(choice.role).value_or(Role::heading1));
    });
    m_commands.observe(Format::setParagraphRole, rich, [this](const ParagraphRoleChoice& choice) {
        if (const auto role = fromRawValue<EditorParagraphStyleRole>(choice.role))
            m_editing.applyParagraphRole(*role);
    });
    m_commands.observe(Format::setParagraphMetrics, rich, [this](const ParagraphMetrics& metrics) {
        m_editing.applyParagraphMetrics(metrics);
    });
    m_commands.observe(
        Format::setParagraphBackgroundColor, rich,
        [this](const ColorChoice& choice) { m_editing.applyParagraphBackground(choice.color); });
}

void FormattingTools::observeCaseCommands()
{
    const auto observeCase = [this](const Notification<CommandTarget>& command, LetterCase wanted) {
        m_commands.observe(command, CommandScope::allNotes, [this, wanted](const CommandTarget&) {
            const QString language = m_languages.languageOf(*m_commands.note());
            m_editing.applyCase(wanted, language.isEmpty() ? QLocale::system() : QLocale(language));
        });
    };
    observeCase(AppCommandEvents::makeUppercase, LetterCase::upper);
    observeCase(AppCommandEvents::makeLowercase, LetterCase::lower);
    observeCase(AppCommandEvents::capitalize, LetterCase::capitalized);
}

} // namespace orvane
