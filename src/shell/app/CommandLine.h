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
using CommandLine = std::variant<RunProgram, PrintText>;

/// Reads the arguments after the program's name; the error is a sentence for a person.
[[nodiscard]] std::expected<CommandLine, QString> readCommandLine(const QStringList& arguments);

} // namespace orvane
