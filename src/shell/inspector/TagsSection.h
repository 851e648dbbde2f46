// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/state/AppState.h"
#include "shell/inspector/TagActions.h"

#include <QWidget>

class QToolButton;

namespace orvane {

class FlowLayout;
class TagChip;
class TagField;

/// The tags that all selected notes and folders have as chips, and a field for more.
class TagsSection : public QWidget {
    Q_OBJECT
public:
    TagsSection(AppState& appState, SheetHost& sheets, Look& look, QWidget* parent = nullptr);

    /// Whose tags are shown; they follow what happens to them.
    void setSubjects(const QList<BinderRowID>& subjects);
    void refresh();

private:
    [[nodiscard]] QStringList subjectTags() const;
    [[nodiscard]] bool mayChange() const;
    /// The tags to complete `text` from, without those that are there already.
    [[nodiscard]] QStringList choicesFor(const QString& text) const;
    void showChips(const QStringList& tags);
    void showMore();
    [[nodiscard]] TagChip* makeChip(const QString& tag);
    void add(const QString& tag);
    void remove(const QString& tag);
    void showMenu(const QString& tag, QPoint position);
    /// Beyond the last chip comes the field.
    void focusChip(qsizetype at);

    AppState& m_appState;
    Look& m_look;
    TagActions* m_actions;
    QList<BinderRowID> m_subjects;
    FlowLayout* m_flow;
    QList<TagChip*> m_chips;
    /// At most so many tags have a chip; the button shows more.
    qsizetype m_mostChips;
    QToolButton* m_more;
    TagField* m_field;
    QToolButton* m_plus;
};

} // namespace orvane
