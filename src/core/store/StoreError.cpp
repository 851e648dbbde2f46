// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/store/StoreError.h"

namespace orvane {

using namespace Qt::StringLiterals;

QString StoreOpenError::text() const
{
    QString line = path;
    if (!detail.isEmpty())
        line += ": "_L1 + detail;
    if (holder)
        line += u" (held by %1, process %2 on %3)"_s.arg(holder->program)
                    .arg(holder->processId)
                    .arg(holder->host);
    return line;
}

} // namespace orvane
