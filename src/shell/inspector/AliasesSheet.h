// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/state/AppState.h"
#include "shell/sheets/SheetHost.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace orvane {

/// The other words for a tag: each is added and removed at once.
class AliasesSheet : public Sheet {
    Q_OBJECT
public:
    AliasesSheet(AppState& appState, const QString& tag, Look& look, QWidget* parent = nullptr);

    [[nodiscard]] QWidget* initialFocus() override;
    [[nodiscard]] QSize sizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QLayout* makeButtons();
    void showAliases();
    void add();
    void removeCurrent();

    AppState& m_appState;
    QString m_tag;
    QLineEdit* m_field;
    QPushButton* m_add;
    QListWidget* m_list;
    QLabel* m_empty;
    QPushButton* m_remove;
};

} // namespace orvane
