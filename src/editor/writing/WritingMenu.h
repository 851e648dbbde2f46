// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/view/EditorExtension.h"
#include "editor/view/EditorSettings.h"
#include "platform/Services.h"

#include <QObject>
#include <QUuid>

namespace orvane {

class EditorView;

/// What a person may do with the selection of a view and with the view itself: the upper part of
/// its context menu.
class WritingMenu final : public QObject, public EditorExtension {
    Q_OBJECT
public:
    /// Adds itself to `view`, which outlives it.
    WritingMenu(EditorView& view, const Services& services, QObject* parent = nullptr);
    ~WritingMenu() override;

    void showText(const std::optional<QUuid>& note, EditorMode mode);

    /// Posts the selection, in a rich note with its attributes and images, to become a note.
    void saveSelectionToNewNote();

    void addToContextMenu(QMenu& menu, QPointF page, qsizetype position) override;

private:
    void fillFocusMenu(QMenu& menu);

    EditorView& m_view;
    Services m_services;
    std::optional<QUuid> m_note;
    EditorMode m_mode = EditorMode::plainText;
};

} // namespace orvane
