// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/SurfacePanel.h"
#include "core/state/AppState.h"

class QButtonGroup;
class QGridLayout;
class QLabel;
class QScrollArea;
class QStackedLayout;
class QTimer;

namespace orvane {

class ImageSection;
class PaneRail;
class SheetHost;
class TableSection;
class TagsSection;
class VersionHistorySection;

/// The Inspector pane: a rail with its two sections, of which one is shown: what there is to know
/// about the selected rows with their tags, and the versions of the selected note. The chosen
/// section is remembered.
class InspectorView : public SurfacePanel {
    Q_OBJECT
public:
    InspectorView(AppState& appState, SheetHost& sheets, Look& look, QWidget* parent = nullptr);

    enum class Section { Details, Versions };
    [[nodiscard]] Section section() const;
    void showSection(Section section);
    /// Puts the keyboard into the section that is shown.
    void focusSection();

    /// How much the text of a note has while it is typed, where that note is selected.
    void showCounts(const QUuid& note, int words, qsizetype characters);

protected:
    void showEvent(QShowEvent* event) override;

private:
    [[nodiscard]] QWidget* makeRail();
    [[nodiscard]] QWidget* makeLowerRail();
    [[nodiscard]] QWidget* makeDetails(SheetHost& sheets);
    [[nodiscard]] QWidget* makeFacts(QWidget* parent);
    [[nodiscard]] QWidget* makeDivider(QWidget* parent);
    void connectAppState();
    QLabel* addRow(const QString& label);
    void show(const QString& heading, const QList<std::pair<QLabel*, QString>>& values);
    void showNothing(const QString& why);
    void refresh();
    void showSubject();
    void showNote(const NoteRecord& note);
    void showVersions(const NoteRecord& note);
    void showRows(const QList<BinderRowID>& rows);
    void showFolder(const FolderRecord& folder);

    AppState& m_appState;
    QButtonGroup* m_sections;
    QLabel* m_sectionName = nullptr;
    QStackedLayout* m_stack;
    QScrollArea* m_scroll;
    QLabel* m_nothing;
    QLabel* m_heading;
    QGridLayout* m_grid;
    QLabel* m_title = nullptr;
    QLabel* m_created = nullptr;
    QLabel* m_changed = nullptr;
    QLabel* m_words = nullptr;
    QLabel* m_characters = nullptr;
    QLabel* m_folder = nullptr;
    QLabel* m_folders = nullptr;
    QLabel* m_notes = nullptr;
    TableSection* m_table = nullptr;
    QWidget* m_tagsPart = nullptr;
    ImageSection* m_image = nullptr;
    PaneRail* m_lowerRail = nullptr;
    TagsSection* m_tags = nullptr;
    VersionHistorySection* m_versions = nullptr;
    QTimer* m_refreshTimer;
};

} // namespace orvane
