// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QUuid>

#include <optional>

namespace orvane {

class UserDefaults;

/// What one note remembers of how it is written.
struct PerNoteEditorProfile {
    QString mode;
    QString fontFamily;
    double fontSize = 16; ///< in points

    bool operator==(const PerNoteEditorProfile&) const = default;

    /// As a note's record keeps it, and back; nothing for a text that is none.
    [[nodiscard]] QString text() const;
    [[nodiscard]] static std::optional<PerNoteEditorProfile> of(const QString& text);

    /// The working values in the settings.
    [[nodiscard]] static PerNoteEditorProfile current(const UserDefaults& defaults);
    void makeCurrent(UserDefaults& defaults) const;
};

/// The profiles of all notes, kept as one value in the user defaults. Main thread.
class PerNoteEditorProfiles {
public:
    explicit PerNoteEditorProfiles(UserDefaults& defaults);

    [[nodiscard]] std::optional<PerNoteEditorProfile> profile(const QUuid& noteID);
    /// Stores all profiles anew if this one differs.
    void setProfile(const QUuid& noteID, const PerNoteEditorProfile& profile);

private:
    void load();

    UserDefaults& m_defaults;
    QByteArray m_bytes; // what m_profiles was read from or written as
    QHash<QString, PerNoteEditorProfile> m_profiles;
};

} // namespace orvane
