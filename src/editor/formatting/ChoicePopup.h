// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/formatting/BarPopup.h"

#include <QStringList>

class QLineEdit;
class QListWidget;

namespace orvane {

/// A field above a list to choose one text from. Return or a click chooses; Down goes from the
/// field into the list.
class ChoicePopup : public BarPopup {
    Q_OBJECT
public:
    enum class Kind {
        fonts,   ///< the field narrows the list, whose names are shown in their own face
        numbers, ///< the field takes a number that need not be in the list
    };
    struct Choices {
        QString name;  ///< of what is chosen
        QString field; ///< what the field is for
        QStringList entries;
        QString current;
        Kind kind = Kind::fonts;
    };

    ChoicePopup(const Choices& choices, Look& look, QWidget* parent);

signals:
    void chosen(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void narrow(const QString& text);
    void choose(const QString& text);
    void chooseTyped();
    void enterList();

    Choices m_choices;
    QLineEdit* m_field;
    QListWidget* m_list;
};

} // namespace orvane
