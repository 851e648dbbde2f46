// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QColor>
#include <QList>
#include <QPixmap>
#include <QRectF>
#include <QString>

class QPainter;

namespace orvane {

/// A picture that a person can give to a note, a folder or a project.
struct IconChoice {
    /// What is stored, such as "bookmark"; never changed once released.
    QString name;
    /// What a person reads.
    QString title;
    /// Further words to find it by.
    QString keywords;
};

/// All of them, in the order to show them in.
[[nodiscard]] const QList<IconChoice>& iconChoices();
/// Those whose title or keywords have a word that begins with each word of `words`.
[[nodiscard]] QList<IconChoice> iconChoicesMatching(const QString& words);

/// Whether there is a drawing for a stored value. Values may come from another version of the
/// program; what has no drawing here is kept as it is and shown by the default picture.
[[nodiscard]] bool hasIconDrawing(const QString& storedIcon);
/// The choice that a stored value stands for; empty when there is none.
[[nodiscard]] QString iconChoiceName(const QString& storedIcon);

/// The drawing in one colour, `pixels` device pixels square; empty when there is none.
[[nodiscard]] QPixmap storedIconPixmap(const QString& storedIcon, int pixels, const QColor& color);
/// Draws it into the middle of `rect`, `size` logical pixels square.
void drawStoredIcon(QPainter& painter, const QRectF& rect, const QString& storedIcon, double size,
                    const QColor& color);

} // namespace orvane
