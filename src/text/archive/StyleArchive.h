// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/archive/CborCursor.h"
#include "text/value/CharacterStyle.h"
#include "text/value/ImageFile.h"
#include "text/value/ParagraphStyle.h"

#include <QCborStreamWriter>
#include <QHash>
#include <QList>

namespace orvane {

/// Gives each different value an index, in the order of their coming.
template <typename Value>
class IndexTable {
public:
    [[nodiscard]] qsizetype indexOf(const Value& value)
    {
        const std::size_t hash = qHash(value);
        for (auto [at, end] = std::as_const(m_known).equal_range(hash); at != end; ++at) {
            if (values[*at] == value)
                return *at;
        }
        m_known.insert(hash, values.size());
        values.append(value);
        return values.size() - 1;
    }

    QList<Value> values;

private:
    QMultiHash<std::size_t, qsizetype> m_known;
};

[[nodiscard]] std::size_t qHash(const TextTable& table, std::size_t seed = 0) noexcept;

/// The tables beside the styles that these refer to by index.
struct ArchiveTables {
    IndexTable<TextTable> tables;
    IndexTable<SharedValue<CellLook>> looks;
    QList<TextAttachment> attachments;
    QHash<const void*, qsizetype> attachmentIndex;
};

/// Puts what `style` refers to into the tables; all styles are collected before any is written.
void collect(const CharacterStyle& style, ArchiveTables& tables);
void collect(const ParagraphStyle& style, ArchiveTables& tables);

// Writing, in the byte form of docs/formats.md. Values that are not finite are written as 0.

void write(QCborStreamWriter& writer, const CharacterStyle& style, ArchiveTables& tables);
void write(QCborStreamWriter& writer, const ParagraphStyle& style, ArchiveTables& tables);
void write(QCborStreamWriter& writer, const TextTable& table);
void write(QCborStreamWriter& writer, const CellLook& look);
void write(QCborStreamWriter& writer, const TextAttachment& attachment, ImageBytes images);

// Reading; the cursor tells of failure.

[[nodiscard]] CharacterStyle readCharacterStyle(CborCursor& cursor, const ArchiveTables& tables);
[[nodiscard]] ParagraphStyle readParagraphStyle(CborCursor& cursor, const ArchiveTables& tables);
[[nodiscard]] TextTable readTable(CborCursor& cursor);
[[nodiscard]] CellLook readCellLook(CborCursor& cursor);
[[nodiscard]] TextAttachment readAttachment(CborCursor& cursor);

} // namespace orvane
