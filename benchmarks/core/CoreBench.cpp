// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/CoreBench.h"

#include "support/Bench.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    orvane::bench::addStoreRows();
    orvane::bench::addNotebookRows();
    return orvane::bench::runMain(argc, argv);
}
