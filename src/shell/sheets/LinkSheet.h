// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/pane/NoteLinks.h"
#include "editor/writing/LinkEditing.h"
#include "shell/sheets/SheetHost.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace orvane {

/// Makes, changes or takes away the link at the selection of a rich note.
class LinkSheet : public Sheet {
    Q_OBJECT
public:
    /// For the text that `session` shows now; both outlive the sheet. A text that is another one by
    /// the time of the answer is left alone.
    LinkSheet(EditorSession& session, const AppState& appState, Look& look,
              QWidget* parent = nullptr);

    [[nodiscard]] QWidget* initialFocus() override;
    [[nodiscard]] QSize sizeHint() const override;

private:
    enum class Target { address, note };

    void addFields(QLayout& layout);
    [[nodiscard]] QLayout* makeButtons();
    void fill();
    void fillNotes();
    void showTarget();
    [[nodiscard]] Target target() const;
    [[nodiscard]] std::optional<QString> address() const;
    void updateButton();
    void showProblem(const QString& problem);
    void accept();
    void change(const std::function<bool(EditGateway&)>& edit);

    EditorSession& m_session;
    const AppState& m_appState;
    std::optional<QUuid> m_note;
    LinkPlace m_place;
    QLineEdit* m_text;
    QComboBox* m_target;
    QLineEdit* m_address;
    QComboBox* m_notes;
    QLabel* m_problem;
    QPushButton* m_accept;
};

} // namespace orvane
