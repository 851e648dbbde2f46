// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/themes/ThemeFile.h"

#include "appearance/themes/AppearanceFields.h"

#include <QCoreApplication>
#include <QJsonDocument>

namespace orvane::ThemeFile {

using namespace Qt::StringLiterals;
using Code = ThemeFileError::Code;

namespace {

const QString format = u"OrvaneWorkspace theme"_s;
constexpr int version = 1;
constexpr qint64 largest = 1024 * 1024;
constexpr qsizetype longestName = 200;

struct Words {
    Q_DECLARE_TR_FUNCTIONS(ThemeFile)
};

/// The name of the first field that lies outside of its range, else empty.
QByteArray fieldOutOfRange(const AppearanceValues& values)
{
    for (const AppearanceField& field : appearanceFields()) {
        const AppearanceFieldValue value = field.get(values);
        const double* number = std::get_if<double>(&value);
        if (number && !(*number >= 0 && *number <= 1))
            return field.name;
    }
    return {};
}

std::unexpected<ThemeFileError> damaged(const QString& detail)
{
    return std::unexpected(ThemeFileError{Code::Damaged, detail});
}

} // namespace

QString suffix()
{
    return u".orvanetheme"_s;
}

QByteArray encode(const AppearanceThemeBundle& bundle)
{
    return QJsonDocument(QJsonObject{{"format"_L1, format},
                                     {"version"_L1, version},
                                     {"bundle"_L1, toJson(bundle)}})
        .toJson();
}

std::expected<AppearanceThemeBundle, ThemeFileError> decode(const QByteArray& data)
{
    if (data.size() > largest)
        return std::unexpected(ThemeFileError{Code::TooLarge, {}});
    const QJsonObject file = QJsonDocument::fromJson(data).object();
    if (file.value("format"_L1).toString() != format)
        return std::unexpected(ThemeFileError{Code::NotATheme, {}});
    const double written = file.value("version"_L1).toDouble(0);
    if (written > version)
        return std::unexpected(ThemeFileError{Code::NewerVersion, {}});
    if (written != version)
        return damaged(u"version"_s);
    auto bundle = appearanceThemeBundleFromJson(file.value("bundle"_L1));
    if (!bundle)
        return damaged(bundle.error().path.isEmpty() ? u"bundle"_s : bundle.error().path);
    bundle->name = bundle->name.simplified().left(longestName);
    if (bundle->name.isEmpty())
        return damaged(u"name"_s);
    bundle->light.name = bundle->dark.name = bundle->name;
    for (const auto mode : {AppearanceThemeMode::Light, AppearanceThemeMode::Dark}) {
        if (const QByteArray field = fieldOutOfRange(bundle->variant(mode).values);
            !field.isEmpty())
            return damaged(modeText(mode) + u'.' + QLatin1String(field));
    }
    return *std::move(bundle);
}

std::expected<void, FileError> write(const AppearanceThemeBundle& bundle, const QString& path)
{
    return writeFileAtomically(path, encode(bundle));
}

std::expected<AppearanceThemeBundle, ThemeFileError> read(const QString& path)
{
    const auto data = readFile(path, FileLimit::theme);
    if (!data && data.error().code == FileError::Code::TooBig)
        return std::unexpected(ThemeFileError{Code::TooLarge, {}});
    if (!data)
        return std::unexpected(ThemeFileError{Code::Unreadable, data.error().detail});
    return decode(*data);
}

QString text(const ThemeFileError& error)
{
    switch (error.code) {
    case Code::Unreadable:
        return Words::tr("The file can't be read: %1").arg(error.detail);
    case Code::TooLarge:
        return Words::tr("The file is far larger than a theme ever is.");
    case Code::NotATheme:
        return Words::tr("The file is not a theme of OrvaneWorkspace, or a part of it is missing.");
    case Code::NewerVersion:
        return Words::tr(
            "The theme was made by a later release of OrvaneWorkspace. This one can't read "
            "it.");
    case Code::Damaged:
        return Words::tr(
                   "The theme is damaged: \"%1\" is missing or has a value that it can't have.")
            .arg(error.detail);
    }
    return {};
}

QString fileName(const QString& themeName)
{
    QString name;
    for (const QChar c : themeName.simplified().left(100)) {
        const bool reserved = u"/\\:*?\"<>|"_s.contains(c) || c < u' ';
        name += reserved ? QChar(u'-') : c;
    }
    while (name.startsWith(u'.'))
        name.remove(0, 1);
    return (name.isEmpty() ? Words::tr("Theme") : name) + suffix();
}

} // namespace orvane::ThemeFile
