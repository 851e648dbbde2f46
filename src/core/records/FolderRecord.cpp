// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/records/FolderRecord.h"

#include "text/rtf/BinderRTF.h"

#include <QCoreApplication>
#include <QHashFunctions>

namespace orvane {

const QUuid FolderRecord::trashFolderID(0x00000000, 0x0000, 0x4000, 0x80, 0x00, 0x00, 0x00, 0x00,
                                        0x00, 0x00, 0x01);

QString FolderRecord::titleForList() const
{
    if (titleRTF) {
        if (const auto rich = BinderRTF::plainString(titleRTF->readOrNothing()))
            return *rich;
    }
    const QString trimmed = name.trimmed();
    return trimmed.isEmpty() ? QCoreApplication::translate("FolderRecord", "Untitled") : trimmed;
}

size_t qHash(const FolderRecord& folder, size_t seed)
{
    return qHashMulti(seed, folder.id, folder.name);
}

} // namespace orvane
