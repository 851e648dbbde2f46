// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/state/AppState.h"
#include "shell/sheets/SheetHost.h"

class QLineEdit;
class QListView;

namespace orvane {

class TagFilterModel;

/// Finds tags by some of their letters and filters the Binder for them at once, for libraries that
/// no menu holds. The keyboard stays in the field: Up and Down walk the list, Return filters for
/// the marked tag or stops it.
class TagFilterSheet : public Sheet {
    Q_OBJECT
public:
    TagFilterSheet(AppState& appState, Look& look, QWidget* parent = nullptr);
    ~TagFilterSheet() override;

    [[nodiscard]] QWidget* initialFocus() override;
    [[nodiscard]] QSize sizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QLayout* makeButtons();
    void search(const QString& text);
    void toggle(const QModelIndex& index);

    AppState& m_appState;
    TagFilterModel* m_model;
    QLineEdit* m_field;
    QListView* m_list;
};

} // namespace orvane
