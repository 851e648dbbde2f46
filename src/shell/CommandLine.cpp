// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/CommandLine.h"

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

const QString help =
    u"OrvaneWorkspace, a writing workspace that keeps its projects on your own disk.\n"
    "\n"
    "usage: orvaneworkspace [option]\n"
    "\n"
    "  --help         print this and end\n"
    "  --version      print the version and end\n"
    "  --tour FOLDER  do the main job off screen with a sample project, and leave pictures of\n"
    "                 every screen in FOLDER\n"
    "\n"
    "Without an option the program starts where the settings say. Projects lie in\n"
    "Documents/OrvaneWorkspace.\n"_s;

} // namespace

std::expected<CommandLine, QString> readCommandLine(const QStringList& arguments)
{
    if (arguments.isEmpty())
        return RunProgram{};
    const QString& first = arguments.first();
    if (first == "--help"_L1 || first == "-h"_L1)
        return PrintText{help};
    if (first == "--version"_L1 || first == "-v"_L1)
        return PrintText{u"OrvaneWorkspace %1\n"_s.arg(QStringLiteral(ORVANE_VERSION))};
    if (first == "--tour"_L1) {
        if (arguments.size() < 2)
            return std::unexpected(u"--tour needs a folder for its pictures."_s);
        return RunTour{arguments.at(1)};
    }
    return std::unexpected(u"“%1” is not an option; --help lists them."_s.arg(first));
}

} // namespace orvane
