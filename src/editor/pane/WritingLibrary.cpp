// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/pane/WritingLibrary.h"

#include <QLocale>

namespace orvane {

using namespace Qt::StringLiterals;

WritingLibrary::WritingLibrary(const Services& services)
    : WritingLibrary(services, dictionaryFolders(), QLocale::system().name())
{}

WritingLibrary::WritingLibrary(const Services& services, const QStringList& dictionaryFolders,
                               const QString& locale)
    : spelling(services.defaults, services.folders.configuration + "/words.txt"_L1,
               dictionaryFolders, locale)
    , bullets(services.defaults, services.notifications)
{}

} // namespace orvane
