// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/formatting/FormatEditing.h"
#include "editor/formatting/SelectionSnapshots.h"
#include "platform/Services.h"

namespace orvane {

class EditorCommands;
class Spelling;

/// Formatting in one text view: carries out the commands that are meant for it and publishes what
/// is under its selection. Main thread.
class FormattingTools {
public:
    /// All outlive it.
    FormattingTools(EditorView& view, EditorCommands& commands, const ListEditing& lists,
                    const Spelling& languages, const Services& services);
    Q_DISABLE_COPY_MOVE(FormattingTools)

    /// After another text has been put into the view, or the same in another mode.
    void showText();
    /// After the view got other colours.
    void lookChanged() { m_snapshots.schedule(); }

private:
    void observeCharacterCommands();
    void observeParagraphCommands();
    void observeCaseCommands();

    EditorCommands& m_commands;
    const Spelling& m_languages;
    FormatEditing m_editing;
    SelectionSnapshots m_snapshots;
};

} // namespace orvane
