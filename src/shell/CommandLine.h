// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>
#include <QStringList>

#include <expected>
#include <variant>

namespace orvane {

/// What the command line asks for.
struct RunProgram {
    QStringList toOpen; ///< as given: links, paths, file URLs
    bool operator==(const RunProgram&) const = default;
};
/// Print this and end.
struct PrintText {
    QString text;
    bool operator==(const PrintText&) const = default;
};
/// Do the main job off screen and leave pictures in the folder.
struct RunTour {
    QString folder;
    bool operator==(const RunTour&) const = default;
};
using CommandLine = std::variant<RunProgram, PrintText, RunTour>;

/// Reads the arguments after the program's name; the error is a sentence for a person.
[[nodiscard]] std::expected<CommandLine, QString> readCommandLine(const QStringList& arguments);

} // namespace orvane
