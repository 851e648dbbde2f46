// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "writing/WritingBench.h"

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    orvane::bench::addBehaviourRows();
    orvane::bench::addImageRows();
    orvane::bench::addListRows();
    orvane::bench::addMarkdownRows();
    orvane::bench::addSessionRows();
    orvane::bench::addToolRows();
    return orvane::bench::runMain(argc, argv);
}
