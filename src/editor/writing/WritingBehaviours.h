// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/writing/AddressLinks.h"
#include "editor/writing/AutoBracketing.h"
#include "editor/writing/FocusMode.h"
#include "editor/writing/SmartPaste.h"
#include "editor/writing/TypewriterScroll.h"
#include "editor/writing/WritingMenu.h"

namespace orvane {

/// What a writer feels in a view beside the typing itself: brackets that close, addresses
/// that become links, pasted text that fits, focus and typewriter mode, and the context menu's part
/// for them. Follows the settings, so a change of one acts at once. Main thread.
class WritingBehaviours final : public QObject {
    Q_OBJECT
public:
    /// `view` outlives it.
    WritingBehaviours(EditorView& view, const Services& services, QObject* parent = nullptr);

    /// The view shows `note`, written in `mode`; nothing for no note.
    void showText(const std::optional<QUuid>& note, EditorMode mode);

private:
    void applySettings();

    UserDefaults& m_defaults;
    WritingMenu m_menu;
    AddressLinks m_links;
    AutoBracketing m_brackets;
    SmartPaste m_paste;
    FocusMode m_focus;
    TypewriterScroll m_typewriter;
    EditorMode m_mode = EditorMode::plainText;
};

} // namespace orvane
