// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/AtomicFile.h"

#include <QString>

#include <expected>
#include <functional>
#include <optional>

namespace orvane {

/// The system beep.
class Beeper {
public:
    virtual ~Beeper() = default;
    virtual void beep() = 0;
};

/// Counts instead of sounding.
class CountingBeeper final : public Beeper {
public:
    void beep() override { ++count; }
    int count = 0;
};

/// The desktop's trash.
class SystemTrash {
public:
    virtual ~SystemTrash() = default;
    /// Moves a file or folder there, recoverable by the desktop's means. Gives the place that it
    /// went to where the system tells it.
    virtual std::expected<std::optional<QString>, FileError> moveToTrash(const QString& path) = 0;
};

/// The trash of the freedesktop.org specification, as Qt implements it.
class DesktopTrash final : public SystemTrash {
public:
    std::expected<std::optional<QString>, FileError> moveToTrash(const QString& path) override;
};

/// A trash in a folder of its own, for tests and the tour.
class FolderTrash final : public SystemTrash {
public:
    explicit FolderTrash(QString folder);
    std::expected<std::optional<QString>, FileError> moveToTrash(const QString& path) override;

private:
    QString m_folder;
};

/// The one question that is asked before content is created or changed.
class LicencePolicy {
public:
    /// Yes unless a policy is set that says otherwise.
    [[nodiscard]] bool canCreateOrEdit() const { return !m_policy || m_policy(); }
    void setPolicy(std::function<bool()> policy) { m_policy = std::move(policy); }

private:
    std::function<bool()> m_policy;
};

/// Where this machine keeps a person's things. Absolute paths without a trailing slash.
struct UserFolders {
    /// The Documents folder; the home folder's "Documents" where the system names none.
    QString documents;
    QString home;
    QString temporary;
    /// Application support of all programs; ours lies below it.
    QString applicationSupport;
    /// Our own configuration folder.
    QString configuration;
    /// Our own folder for what is neither a person's document nor a setting.
    QString state;

    [[nodiscard]] static UserFolders ofThisUser();
    /// All of them below `root`, for tests and the tour.
    [[nodiscard]] static UserFolders below(const QString& root);
};

} // namespace orvane
