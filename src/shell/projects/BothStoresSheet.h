// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/state/UnsavedWork.h"
#include "shell/sheets/SheetHost.h"

class QLabel;
class QListWidget;
class QTextEdit;

namespace orvane {

/// Shows the notes in which two stores differ, each as it is here beside as it is there, to read;
/// and asks which store the project goes on with.
class BothStoresSheet : public Sheet {
    Q_OBJECT
public:
    enum class Decision { KeepMine, TakeTheirs };

    BothStoresSheet(const StoreSides& sides, const QString& projectTitle, Timestamp now, Look& look,
                    QWidget* parent = nullptr);

    [[nodiscard]] QWidget* initialFocus() override;
    [[nodiscard]] QSize sizeHint() const override { return {960, 640}; }

signals:
    /// Not sent when the sheet is closed without a decision.
    void decided(orvane::BothStoresSheet::Decision decision);

private:
    [[nodiscard]] QWidget* makeColumn(const QString& title, QLabel*& facts, QTextEdit*& text);
    [[nodiscard]] QLayout* makeFoot();
    void fillList();
    void showNote(int row);
    void showSide(const std::optional<Shared<NoteRecord>>& note, QLabel& facts, QTextEdit& text);
    void decide(Decision decision);

    QList<StoreSides::Difference> m_differences;
    Timestamp m_now;
    QListWidget* m_list;
    QLabel* m_mineFacts = nullptr;
    QLabel* m_theirFacts = nullptr;
    QTextEdit* m_mine = nullptr;
    QTextEdit* m_theirs = nullptr;
};

} // namespace orvane
