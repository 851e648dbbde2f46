// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/records/JsonObjectReader.h"
#include "core/versions/NoteVersion.h"

#include <QByteArray>
#include <QList>

#include <expected>

/// The text of a timeline of versions, a JSON array, oldest first; docs/formats.md has its members.
/// It is edited as text: a version that stays is copied as it stands, so that adding one does not
/// build a hundred others anew. Any thread.
namespace orvane::VersionTimeline {

/// The versions of a timeline. Their long texts are passed over, not decoded and not checked.
[[nodiscard]] std::expected<QList<NoteVersionSummary>, JsonError>
summaries(const QByteArray& timeline);

/// Every version whole, which also checks every text.
[[nodiscard]] std::expected<QList<NoteVersionSnapshot>, JsonError>
decoded(const QByteArray& timeline);

/// One version, of the text that stands at its `piece`.
[[nodiscard]] std::expected<NoteVersionSnapshot, JsonError> decodedPiece(const QByteArray& piece);

/// The text of one version, as a `piece` of a timeline.
[[nodiscard]] QByteArray pieceOf(const NoteVersionSnapshot& version);

/// The timeline of those versions of `timeline` that stay, with `added` behind them if it isn't
/// empty.
[[nodiscard]] QByteArray timelineOf(const QByteArray& timeline,
                                    const QList<NoteVersionSummary>& staying,
                                    QByteArrayView added = {});

/// A larger file is thinned.
inline constexpr qsizetype thinnedFrom = 32 << 20;
/// So many of the latest stay in any case.
inline constexpr qsizetype latestThatStay = 20;

/// What stays of `oldestFirst` when it is thinned: labelled versions, the last `latestThatStay`,
/// and of the others the last one of an hour for a day, of a day for 30 days, then of a month
/// (hours, days and months of UTC). Thinning again leaves the same.
[[nodiscard]] QList<NoteVersionSummary> thinned(const QList<NoteVersionSummary>& oldestFirst,
                                                Timestamp now);

} // namespace orvane::VersionTimeline
