// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/AppearanceTokens.h"
#include "appearance/Contrast.h"
#include "appearance/themes/AppearanceFields.h"
#include "appearance/themes/BundledThemes.h"
#include "appearance/themes/ThemeFile.h"
#include "support/MemoryLimit.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cstdlib>
#include <cstring>

using namespace orvane;
using namespace Qt::StringLiterals;

namespace {

/// A theme of the program in which each ten bytes replace one field: the variant and the field,
/// the kind of value, and eight bytes of it. Plain bytes seldom hit a whole theme.
QByteArray changedTheme(const QByteArray& changes)
{
    QJsonObject file = QJsonDocument::fromJson(ThemeFile::encode(signatureBundle())).object();
    QJsonObject bundle = file.value("bundle"_L1).toObject();
    const auto& fields = appearanceFields();
    for (qsizetype at = 0; at + 10 <= changes.size(); at += 10) {
        const auto which = static_cast<unsigned char>(changes[at]);
        const QString variant = which & 0x80 ? u"light"_s : u"dark"_s;
        const QString name = QString::fromLatin1(fields[(which & 0x7F) % fields.size()].name);
        double number = 0;
        std::memcpy(&number, changes.constData() + at + 2, sizeof number);
        QJsonObject theme = bundle.value(variant).toObject();
        switch (static_cast<unsigned char>(changes[at + 1]) % 5) {
        case 0:
            theme.insert(name, number);
            break;
        case 1: // within the range, so that the theme is taken
            theme.insert(name, static_cast<unsigned char>(changes[at + 2]) / 255.0);
            break;
        case 2:
            theme.insert(name, (changes[at + 2] & 1) != 0);
            break;
        case 3:
            theme.insert(name, QString::fromLatin1(changes.mid(at + 2, 8)));
            break;
        default:
            theme.remove(name);
        }
        bundle.insert(variant, theme);
    }
    file.insert("bundle"_L1, bundle);
    return QJsonDocument(file).toJson(QJsonDocument::Compact);
}

/// Whatever colours a theme has, text reads on every surface.
void checkReadable(const AppearanceValues& values)
{
    const Tokens tokens = tokensFor(values);
    for (const SurfaceTokens& surface : tokens.surfaces) {
        if (contrastRatio(surface.text, surface.ground) < textContrast ||
            contrastRatio(surface.textSecondary, surface.ground) < textContrast ||
            contrastRatio(surface.icon, surface.ground) < iconContrast)
            std::abort();
    }
}

} // namespace

// Input that begins with "{" is a file; any other changes a good one. What is taken comes out of a
// file of its own as it was, and can be read.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const QByteArray input(reinterpret_cast<const char*>(data), qsizetype(size));
    const QByteArray file = input.startsWith('{') ? input : changedTheme(input);
    std::expected<AppearanceThemeBundle, ThemeFileError> bundle;
    {
        const fuzz::MemoryLimit limit(std::size_t(file.size()));
        bundle = ThemeFile::decode(file);
    }
    if (!bundle)
        return 0;
    if (ThemeFile::decode(ThemeFile::encode(*bundle)) != bundle)
        std::abort();
    checkReadable(bundle->light.values);
    checkReadable(bundle->dark.values);
    return 0;
}
