// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QByteArray>

#include <functional>
#include <memory>
#include <optional>

namespace orvane {

/// The file of an image as a value: known by the SHA-256 of its bytes, which are either in memory
/// or lie elsewhere, as in the project's store. Copies share one cell. Any thread.
class ImageFile {
public:
    static constexpr qsizetype hashSize = 32;

    /// No file.
    ImageFile() = default;
    /// The file with these bytes; none for no bytes.
    explicit ImageFile(QByteArray bytes);
    /// A file of `size` bytes that lies elsewhere; `hash` has `hashSize` bytes.
    ImageFile(QByteArray hash, qsizetype size);

    [[nodiscard]] bool isNull() const { return !m_cell; }
    [[nodiscard]] QByteArray hash() const;
    [[nodiscard]] qsizetype size() const;
    /// The bytes while they are in memory.
    [[nodiscard]] std::optional<QByteArray> bytes() const;
    /// Gives the bytes up, for all copies, once they lie elsewhere.
    void release() const;

    /// Files are equal when their hashes are.
    friend bool operator==(const ImageFile& one, const ImageFile& other);

private:
    struct Cell;
    std::shared_ptr<Cell> m_cell;
};

/// What an archive has of its images.
enum class ImageBytes {
    elsewhere, ///< their hashes, by which the bytes are found
    inside,    ///< the bytes themselves, as far as they are in memory
};

/// Gives the bytes of a file that lies elsewhere; nothing where they can't be read.
using ImageReader = std::function<std::optional<QByteArray>(const ImageFile&)>;

} // namespace orvane
