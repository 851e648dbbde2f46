// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "ShellBench.h"

#include "support/Bench.h"

#include <QApplication>

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    orvane::bench::addBinderRows();
    orvane::bench::addEditRows();
    orvane::bench::addKeysRows();
    orvane::bench::addLayoutRows();
    orvane::bench::addStartRows();
    return orvane::bench::runMain(argc, argv);
}
