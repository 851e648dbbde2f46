// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/session/PerNoteEditorProfile.h"

#include "core/records/JsonObjectReader.h"
#include "editor/view/EditorSettings.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

const QString profilesKey = u"settings.editor.perNoteProfiles.v1"_s;

std::optional<PerNoteEditorProfile> profileOf(const QJsonObject& object)
{
    const QJsonValue mode = object["mode"_L1];
    const QJsonValue family = object["fontFamily"_L1];
    const QJsonValue size = object["fontSize"_L1];
    if (!mode.isString() || !family.isString() || !size.isDouble())
        return std::nullopt;
    return PerNoteEditorProfile{mode.toString(), family.toString(), size.toDouble()};
}

std::optional<QHash<QString, PerNoteEditorProfile>> decoded(const QByteArray& bytes)
{
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isObject())
        return std::nullopt;
    QHash<QString, PerNoteEditorProfile> profiles;
    const QJsonObject all = document.object();
    for (auto it = all.begin(); it != all.end(); ++it) {
        const auto one = profileOf(it->toObject());
        if (!one)
            return std::nullopt;
        profiles.insert(it.key(), *one);
    }
    return profiles;
}

QJsonObject asJson(const PerNoteEditorProfile& profile)
{
    return {{"mode"_L1, profile.mode},
            {"fontFamily"_L1, profile.fontFamily},
            {"fontSize"_L1, profile.fontSize}};
}

QByteArray encoded(const QHash<QString, PerNoteEditorProfile>& profiles)
{
    QJsonObject all;
    for (auto it = profiles.begin(); it != profiles.end(); ++it)
        all.insert(it.key(), asJson(*it));
    return QJsonDocument(all).toJson(QJsonDocument::Compact);
}

/// The object in `bytes`, which has members, with one more. Encoding all of them anew for each new
/// note would take long in a large library.
QByteArray withMember(const QByteArray& bytes, const QString& key,
                      const PerNoteEditorProfile& profile)
{
    const QByteArray member =
        QJsonDocument(QJsonObject{{key, asJson(profile)}}).toJson(QJsonDocument::Compact);
    return bytes.chopped(1) + ',' + member.sliced(1);
}

} // namespace

QString PerNoteEditorProfile::text() const
{
    return QString::fromUtf8(QJsonDocument(asJson(*this)).toJson(QJsonDocument::Compact));
}

std::optional<PerNoteEditorProfile> PerNoteEditorProfile::of(const QString& text)
{
    return profileOf(QJsonDocument::fromJson(text.toUtf8()).object());
}

PerNoteEditorProfile PerNoteEditorProfile::current(const UserDefaults& defaults)
{
    return {editorModeSetting.read(defaults), editorFontFamilySetting.read(defaults),
            editorFontSizeSetting.read(defaults)};
}

void PerNoteEditorProfile::makeCurrent(UserDefaults& defaults) const
{
    if (*this == current(defaults))
        return;
    editorModeSetting.write(defaults, mode);
    editorFontFamilySetting.write(defaults, fontFamily);
    editorFontSizeSetting.write(defaults, fontSize);
}

PerNoteEditorProfiles::PerNoteEditorProfiles(UserDefaults& defaults)
    : m_defaults(defaults)
{}

void PerNoteEditorProfiles::load()
{
    const QByteArray bytes = m_defaults.get(profilesKey, QByteArray());
    if (bytes == m_bytes)
        return;
    m_bytes = bytes;
    m_profiles = decoded(bytes).value_or(QHash<QString, PerNoteEditorProfile>());
}

std::optional<PerNoteEditorProfile> PerNoteEditorProfiles::profile(const QUuid& noteID)
{
    load();
    const auto found = m_profiles.constFind(uuidText(noteID));
    if (found == m_profiles.cend())
        return std::nullopt;
    return *found;
}

void PerNoteEditorProfiles::setProfile(const QUuid& noteID, const PerNoteEditorProfile& profile)
{
    if (!std::isfinite(profile.fontSize) || this->profile(noteID) == profile)
        return;
    const QString key = uuidText(noteID);
    const bool canAppend =
        !m_profiles.isEmpty() && !m_profiles.contains(key) && m_bytes.endsWith('}');
    m_profiles.insert(key, profile);
    m_bytes = canAppend ? withMember(m_bytes, key, profile) : encoded(m_profiles);
    m_defaults.set(profilesKey, DefaultsValue(m_bytes));
}

} // namespace orvane
