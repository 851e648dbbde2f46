// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>

class QGridLayout;
class QLabel;
class QVBoxLayout;

namespace orvane {

/// Puts a section's head and a grid for its facts, names at the start and values at the end of the
/// row, into `column`.
void addFactGrid(QVBoxLayout& column, const QString& head, QGridLayout& grid);
/// A row with a name; its value, which the name is told for to screen readers.
QLabel* addFact(QGridLayout& grid, const QString& name);

} // namespace orvane
