// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/state/AppState.h"
#include "shell/sheets/SearchListSheet.h"

namespace orvane {

class MoveTargets;

/// Finds the folder that rows of the Binder go to, by some letters of its name; a click marks one,
/// Return and the button move there. Or makes a new folder for them.
class MoveToSheet : public SearchListSheet {
    Q_OBJECT
public:
    /// For a row or more of the project, none of them in the Trash.
    MoveToSheet(AppState& appState, QList<BinderRowID> rows, Look& look, QWidget* parent = nullptr);
    ~MoveToSheet() override;

signals:
    /// A folder is to be made below this one, or at the top, and the rows moved into it.
    void newFolderRequested(const std::optional<QUuid>& parent);

protected:
    void search(const QString& text) override;
    void choose(const QModelIndex& index) override;
    void clicked(const QModelIndex& index) override;
    [[nodiscard]] QModelIndex best() const override;

private:
    [[nodiscard]] static QString titleFor(const QList<BinderRowID>& rows);
    MoveToSheet(std::unique_ptr<MoveTargets> targets, AppState& appState, QList<BinderRowID> rows,
                Look& look, QWidget* parent);

    std::unique_ptr<MoveTargets> m_targets;
    AppState& m_appState;
    QList<BinderRowID> m_rows;
};

} // namespace orvane
