// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QComboBox>

namespace orvane {

/// One of the texts that a setting can hold, and the words for it.
struct Choice {
    QString stored;
    QString label;
};

/// A list to choose a stored text from. The wheel scrolls the page unless it has the keyboard.
class ChoiceField : public QComboBox {
    Q_OBJECT
public:
    explicit ChoiceField(const QList<Choice>& choices, QWidget* parent = nullptr);

    /// Shows the choice; a text that is none of them is added as itself.
    void showStored(const QString& stored);
    [[nodiscard]] QString stored() const { return currentData().toString(); }

protected:
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace orvane
