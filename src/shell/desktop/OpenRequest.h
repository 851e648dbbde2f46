// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace orvane {

/// What a start of the program is asked to show: a person has clicked a link of ours, has opened
/// files with the program, or has just started it.
struct OpenRequest {
    QStringList links; ///< "orvaneworkspace://…", also with the earlier scheme "orvanenotes"
    QStringList files; ///< absolute paths
    /// By which the desktop allows a window to come to the front; empty where it gave none.
    QString activationToken;

    bool operator==(const OpenRequest&) const = default;
    [[nodiscard]] bool isEmpty() const { return links.isEmpty() && files.isEmpty(); }
};

/// Whether `text` is a link that this program opens.
[[nodiscard]] bool isOwnLink(const QString& text);

/// Sorts arguments of a command line, or of the desktop, into links and files: file URLs become
/// paths, relative paths count from `folder`. URLs of other schemes are left out.
[[nodiscard]] OpenRequest openRequestFor(const QStringList& arguments, const QString& folder);

/// The message by which one start hands the request to the program that runs already, and back.
/// A message of more than `longestOpenRequest` bytes, or of any other shape, is refused.
inline constexpr qsizetype longestOpenRequest = 1'000'000;
[[nodiscard]] QByteArray encoded(const OpenRequest& request);
[[nodiscard]] std::optional<OpenRequest> decodedOpenRequest(const QByteArray& message);

} // namespace orvane
