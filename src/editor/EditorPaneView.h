// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/SurfacePanel.h"
#include "editor/EditorSession.h"

class QLineEdit;
class QStackedLayout;
class QTimer;

namespace orvane {

class StatusStrip;
class TextHost;

/// The editor pane: title field, text and status strip of the selected note, or what to do when
/// none is selected. Owns the session that takes each edit to the disk.
class EditorPaneView : public SurfacePanel {
    Q_OBJECT
public:
    EditorPaneView(AppState& appState, Look& look, QWidget* parent = nullptr);

    [[nodiscard]] EditorSession& session() { return m_session; }
    /// Puts the caret into the title, all of it selected, or into the text.
    void focusTitle();
    void focusText();

signals:
    /// The person asks for a note where there is none.
    void newNoteRequested();

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QWidget* makePage();
    [[nodiscard]] QWidget* makeEmptyState();
    void connectSession();
    void applyHostLook();
    void placeTitle();
    void loadDraft();
    void updateCounts();
    void updateSavingState();
    void updateEditable();

    AppState& m_appState;
    EditorSession m_session;
    QStackedLayout* m_stack;
    QWidget* m_titleRow = nullptr;
    QLineEdit* m_title = nullptr;
    TextHost* m_text = nullptr;
    QWidget* m_emptyAction = nullptr;
    StatusStrip* m_status;
    QTimer* m_countTimer;
    int m_columnWidth = 680;
};

inline const Setting<QString> editorFontFamilySetting{u"settings.editor.fontFamily",
                                                      QStringLiteral("Georgia")};
inline constexpr Setting<double> editorFontSizeSetting{u"settings.editor.fontSize", 16};
inline constexpr Setting<double> editorDisplayZoomSetting{u"settings.appearance.editor.displayZoom",
                                                          1.25};
inline constexpr Setting<double> bottomDocumentPaddingSetting{
    u"settings.editor.bottomDocumentPadding", 220};

} // namespace orvane
