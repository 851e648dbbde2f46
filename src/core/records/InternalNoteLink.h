// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QString>
#include <QUuid>

#include <optional>

/// Links from text to a note: "orvaneworkspace://note/" and the note's id.
namespace orvane::InternalNoteLink {

/// The note that `text` leads to. Scheme and host are read in any case, the scheme of the
/// product's earlier name as well; nothing for any other text.
[[nodiscard]] std::optional<QUuid> noteID(const QString& text);

/// The link to a note, its id in capitals.
[[nodiscard]] QString link(const QUuid& noteID);

} // namespace orvane::InternalNoteLink
