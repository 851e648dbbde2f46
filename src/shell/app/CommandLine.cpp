// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/app/CommandLine.h"

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

const QString help =
    u"OrvaneWorkspace, a writing workspace that keeps its projects on your own disk.\n"
    "\n"
    "usage: orvaneworkspace [option] [--] [link, file or project folder]…\n"
    "\n"
    "  --help     print this and end\n"
    "  --version  print the version and end\n"
    "\n"
    "Links begin with orvaneworkspace://. A text file becomes a note of the open project. Where\n"
    "the program runs already, it opens them and comes to the front.\n"
    "\n"
    "Without anything to open the program starts where the settings say. Projects lie in\n"
    "Documents/OrvaneWorkspace.\n"_s;

} // namespace

std::expected<CommandLine, QString> readCommandLine(const QStringList& arguments)
{
    const QString first = arguments.value(0);
    if (first == "--help"_L1 || first == "-h"_L1)
        return PrintText{help};
    if (first == "--version"_L1 || first == "-v"_L1)
        return PrintText{u"OrvaneWorkspace %1\n"_s.arg(QStringLiteral(ORVANE_VERSION))};
    if (first == "--"_L1)
        return RunProgram{arguments.sliced(1)};
    if (first.startsWith(u'-'))
        return std::unexpected(u"“%1” is not an option; --help lists them."_s.arg(first));
    return RunProgram{arguments};
}

} // namespace orvane
