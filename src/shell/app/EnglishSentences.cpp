// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/app/EnglishSentences.h"

#include <QCoreApplication>
#include <QTranslator>

namespace orvane {

// Made by the build.
extern const unsigned char englishSentences[];
extern const int englishSentencesSize;

void installEnglishSentences()
{
    QCoreApplication* application = QCoreApplication::instance();
    if (application->findChild<QTranslator*>(QString(), Qt::FindDirectChildrenOnly))
        return;
    auto* translator = new QTranslator(application);
    if (!translator->load(englishSentences, englishSentencesSize) ||
        !QCoreApplication::installTranslator(translator))
        qWarning("The sentences for single things can't be read");
}

} // namespace orvane
