// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/formatting/FormatEditing.h"
#include "editor/formatting/SelectionSnapshots.h"
#include "editor/view/EditorExtension.h"
#include "platform/Services.h"

namespace orvane {

class CommandReceiver;
class Spelling;

/// Formatting in one text view: carries out the commands that are meant for it, ends a heading with
/// Return, and publishes what is under the selection. Main thread.
class FormattingTools : public EditorExtension {
public:
    /// All outlive it.
    FormattingTools(EditorView& view, CommandReceiver& commands, const ListEditing& lists,
                    const Spelling& languages, const Services& services);
    ~FormattingTools() override;
    Q_DISABLE_COPY_MOVE(FormattingTools)

    /// After another text has been put into the view, or the same in another mode.
    void showText();
    /// Asked for the table at the caret; must be callable as long as this lives.
    void setTableSource(std::function<std::optional<EditorTableSnapshot>()> table)
    {
        m_snapshots.setTableSource(std::move(table));
    }
    /// Asked for the image that is selected; must be callable as long as this lives.
    void setSelectedImage(std::function<std::optional<SelectedImageInfo>()> image)
    {
        m_snapshots.setSelectedImage(std::move(image));
    }
    /// What is under the selection may look otherwise.
    void refreshSnapshot() { m_snapshots.schedule(); }
    /// After the view got other colours.
    void lookChanged() { m_snapshots.schedule(); }

    bool command(EditAction command) override;

private:
    void observeCharacterCommands();
    void observeParagraphCommands();
    void observeCaseCommands();

    EditorView& m_view;
    CommandReceiver& m_commands;
    const Spelling& m_languages;
    FormatEditing m_editing;
    SelectionSnapshots m_snapshots;
};

} // namespace orvane
