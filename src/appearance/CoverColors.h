// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Tokens.h"

#include <QColor>
#include <QList>
#include <QString>

namespace orvane {

/// A colour that a person can give to the cover of a project.
struct CoverChoice {
    /// What is stored, "#RRGGBB"; never changed once released.
    QString stored;
    /// What a person reads.
    QString title;
};
[[nodiscard]] const QList<CoverChoice>& coverChoices();

/// The colours of a cover on a card. The ink reads 3 to 1 on all of the wash.
struct CoverColors {
    QColor washStart;
    QColor washEnd;
    QColor ink;
};
/// By a person's own colour, "#RRGGBB", else by the group that the icon belongs to: writing has the
/// accent, reading, stage and pictures, people, and ways each a colour of theirs. What is no colour
/// counts as none. A cover under the pointer is a little stronger.
enum class CoverState { Plain, Hovered };
[[nodiscard]] CoverColors coverColors(const QString& storedColor, const QString& storedIcon,
                                      const Tokens& tokens, CoverState state = CoverState::Plain);

} // namespace orvane
