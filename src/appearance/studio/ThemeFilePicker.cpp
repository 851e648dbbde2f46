// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/studio/ThemeFilePicker.h"

#include "appearance/themes/ThemeFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QStandardPaths>

namespace orvane {

namespace {

QString filter()
{
    return QCoreApplication::translate("ThemeFilePicker", "Themes (*%1)").arg(ThemeFile::suffix());
}

QString documents()
{
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

} // namespace

QString DesktopThemeFilePicker::fileToImport(QWidget* parent)
{
    return QFileDialog::getOpenFileName(
        parent, QCoreApplication::translate("ThemeFilePicker", "Import Theme"), documents(),
        filter());
}

QString DesktopThemeFilePicker::fileToExport(QWidget* parent, const QString& suggestedName)
{
    QString path = QFileDialog::getSaveFileName(
        parent, QCoreApplication::translate("ThemeFilePicker", "Export Theme"),
        QDir(documents()).filePath(suggestedName), filter());
    if (!path.isEmpty() && !path.endsWith(ThemeFile::suffix()))
        path += ThemeFile::suffix();
    return path;
}

} // namespace orvane
