// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/state/AppState.h"
#include "shell/sheets/SearchListSheet.h"

namespace orvane {

class TagFilterModel;

/// Finds tags by some of their letters and filters the Binder for them at once, for libraries that
/// no menu holds. Choosing a tag filters for it, or stops that.
class TagFilterSheet : public SearchListSheet {
    Q_OBJECT
public:
    TagFilterSheet(AppState& appState, Look& look, QWidget* parent = nullptr);
    ~TagFilterSheet() override;

protected:
    void search(const QString& text) override;
    void choose(const QModelIndex& index) override;

private:
    TagFilterSheet(std::unique_ptr<TagFilterModel> model, AppState& appState, Look& look,
                   QWidget* parent);

    std::unique_ptr<TagFilterModel> m_model;
    AppState& m_appState;
};

} // namespace orvane
