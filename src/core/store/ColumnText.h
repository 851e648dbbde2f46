// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace orvane {

// The texts that stand in a store's columns. The forms that the program itself writes are read
// without a JSON parser; every other valid form is read too.

/// 8-4-4-4-12 in either case; anything else gives nothing.
[[nodiscard]] std::optional<QUuid> uuidFromStore(QByteArrayView text);
[[nodiscard]] QByteArray uuidToStore(const QUuid& id);

/// Tags: a JSON list of texts; anything else is no tags.
[[nodiscard]] QStringList tagsFromStore(QByteArrayView json);
[[nodiscard]] QByteArray tagsToStore(const QStringList& tags);

/// Images: a JSON list of texts "HASH:LENGTH", the hash in small hexadecimal digits; whatever is
/// otherwise is passed over.
struct ImageEntry {
    QByteArray hash;
    qint64 length = 0;
};
[[nodiscard]] QList<ImageEntry> imagesFromStore(QByteArrayView json);
[[nodiscard]] QByteArray imagesToStore(const QList<ImageEntry>& images);
/// The number of the row in "OrvaneNoteBytes" that an image has: below 0, from its hash.
[[nodiscard]] qint64 imageRow(const QByteArray& hash);

/// One part of a folder order or, with `isFolderOrder` false, of a note order: the JSON of an order
/// entry. Nothing when it can't be read or is of another container.
[[nodiscard]] std::optional<QList<QUuid>>
layoutPartFromStore(QByteArrayView json, bool isFolderOrder, const std::optional<QUuid>& container);
[[nodiscard]] QByteArray layoutPartToStore(const QList<QUuid>& ids, bool isFolderOrder,
                                           const std::optional<QUuid>& container);

} // namespace orvane
