// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/formatting/BarPopup.h"

class QLabel;

namespace orvane {

/// Chooses how large a new table is: a field of squares that is swept by the mouse or the arrow
/// keys, and numbers for larger ones.
class TableGridPopup final : public BarPopup {
    Q_OBJECT
public:
    static constexpr int mostSwept = 10;

    TableGridPopup(Look& look, QWidget* parent);

signals:
    void chosen(int rows, int columns);

private:
    class Field;

    void choose(int rows, int columns);

    Field* m_field;
    QLabel* m_size;
};

} // namespace orvane
