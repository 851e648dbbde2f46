// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/lists/CustomBulletLibrary.h"
#include "editor/spelling/Spelling.h"
#include "platform/Services.h"

namespace orvane {

/// What the writing tools of all text views share: the languages and words of the spelling check,
/// and a person's own bullets. Main thread.
struct WritingLibrary {
    /// With the dictionaries of this machine and the language of the desktop.
    explicit WritingLibrary(const Services& services);
    WritingLibrary(const Services& services, const QStringList& dictionaryFolders,
                   const QString& locale);

    Spelling spelling;
    CustomBulletLibrary bullets;
};

} // namespace orvane
