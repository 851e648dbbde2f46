// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/writing/WritingBehaviours.h"

namespace orvane {

WritingBehaviours::WritingBehaviours(EditorView& view, const Services& services, QObject* parent)
    : QObject(parent)
    , m_defaults(services.defaults)
    , m_menu(view, services)
    , m_links(view)
    , m_brackets(view)
    , m_paste(view)
    , m_focus(view)
    , m_typewriter(view)
{
    connect(&m_defaults, &UserDefaults::changed, this, [this](const QString& key) {
        if (key.startsWith(u"settings.editor."))
            applySettings();
    });
    applySettings();
}

void WritingBehaviours::showText(const std::optional<QUuid>& note, EditorMode mode)
{
    m_mode = mode;
    m_menu.showText(note, mode);
    applySettings();
}

void WritingBehaviours::applySettings()
{
    // A bracket of Markdown is part of a sign as often as not.
    m_brackets.setEnabled(m_mode != EditorMode::markdown && autoBracketingSetting.read(m_defaults));
    m_paste.setEnabled(m_mode == EditorMode::richText && smartPasteSetting.read(m_defaults));
    const FocusGranularity granularity =
        focusGranularityNamed(focusModeGranularitySetting.read(m_defaults));
    m_focus.setGranularity(focusModeSetting.read(m_defaults) ? std::optional(granularity)
                                                             : std::nullopt);
    m_typewriter.setEnabled(typewriterModeSetting.read(m_defaults));
}

} // namespace orvane
