// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "platform/SetAside.h"

#include <QFileInfo>

namespace orvane {

QString setAsidePath(const QString& path)
{
    const auto isTaken = [](const QString& name) {
        const QFileInfo there(name);
        return there.exists() || there.isSymLink(); // a dangling link has the name as well
    };
    const QString first = path + QStringLiteral(".damaged");
    QString name = first;
    for (int number = 2; isTaken(name); ++number)
        name = first + u'-' + QString::number(number);
    return name;
}

} // namespace orvane
