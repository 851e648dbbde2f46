// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "core/versions/VersionFiles.h"

#include "core/library/ProjectLibraryController.h"
#include "core/versions/VersionTimeline.h"
#include "platform/SetAside.h"

#include <QFile>

#include <filesystem>
#include <system_error>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

using Code = VersionHistoryError::Code;

std::unexpected<VersionHistoryError> failed(Code code, const QString& detail)
{
    return std::unexpected(VersionHistoryError{code, detail});
}

std::unexpected<VersionHistoryError> damaged(const QString& path, const JsonError& error)
{
    return failed(Code::Damaged, path + ": "_L1 + error.text());
}

// A folder that can't be searched hides a file without being a reason to write a new one.
bool isAbsent(const QString& path)
{
    std::error_code error;
    const auto status = std::filesystem::symlink_status(path.toStdU16String(), error);
    return status.type() == std::filesystem::file_type::not_found;
}

/// The file's bytes, or nothing when there is no file.
std::expected<std::optional<QByteArray>, VersionHistoryError> bytesAt(const QString& path)
{
    auto bytes = readFile(path, FileLimit::versionHistory);
    if (!bytes && bytes.error().code == FileError::Code::NotFound && isAbsent(path))
        return std::nullopt;
    if (!bytes)
        return failed(Code::Unreadable, bytes.error().text());
    return *std::move(bytes);
}

/// The project's data folder is never made here: one that is gone has moved or is unmounted.
std::expected<void, VersionHistoryError> makeHistoryFolder(const QString& path)
{
    std::error_code error;
    std::filesystem::create_directory(path.toStdU16String(), error);
    if (error)
        return failed(Code::NotWritten, path + ": "_L1 + QString::fromStdString(error.message()));
    return {};
}

NoteVersionSnapshot snapshotOf(const VersionSource& source)
{
    NoteVersionSnapshot snapshot;
    snapshot.id = source.id;
    snapshot.noteID = source.noteID;
    snapshot.capturedAt = source.capturedAt;
    snapshot.title = source.title;
    snapshot.bodyPlain = QString::fromUtf8(source.bodyUtf8);
    if (!source.bodyRTF.isEmpty())
        snapshot.bodyRTFBase64 = QString::fromLatin1(source.bodyRTF.toBase64());
    if (source.richContentPayload)
        snapshot.richContentPayloadBase64 =
            QString::fromLatin1(source.richContentPayload->toBase64());
    snapshot.label = source.label;
    snapshot.wordCount = wordCount(snapshot.bodyPlain);
    return snapshot;
}

} // namespace

VersionFiles::VersionFiles(Write write)
    : m_write(std::move(write))
{}

QString VersionFiles::folderPath(const QString& projectRootPath)
{
    return ProjectLibraryController::projectDataDirectoryPath(projectRootPath) + "/history"_L1;
}

QString VersionFiles::filePath(const QString& projectRootPath, const QUuid& noteID)
{
    return folderPath(projectRootPath) + u'/' + uuidText(noteID) + ".json"_L1;
}

std::expected<void, VersionHistoryError>
VersionFiles::append(const QString& projectRootPath, const VersionSource& version, qsizetype most)
{
    if (auto folder = makeHistoryFolder(folderPath(projectRootPath)); !folder)
        return folder;
    const QString path = filePath(projectRootPath, version.noteID);
    auto timeline = checked(path);
    if (!timeline && timeline.error().code == Code::Damaged) {
        qWarning("A version history is damaged and is set aside: %ls",
                 qUtf16Printable(timeline.error().detail));
        QFile file(path);
        if (!file.rename(setAsidePath(path)))
            return failed(Code::NotWritten, path + ": "_L1 + file.errorString());
        timeline = Timeline();
    }
    if (!timeline)
        return std::unexpected(timeline.error());
    const QByteArray added = VersionTimeline::pieceOf(snapshotOf(version));
    QList<NoteVersionSummary> staying = timeline->versions;
    if (timeline->text.size() + added.size() > VersionTimeline::thinnedFrom)
        staying = VersionTimeline::thinned(staying, version.capturedAt);
    const qsizetype surplus = std::max<qsizetype>(0, staying.size() + 1 - most);
    staying.remove(0, std::min(surplus, staying.size()));
    return write(path, VersionTimeline::timelineOf(timeline->text, staying, added));
}

std::expected<void, VersionHistoryError> VersionFiles::remove(const QString& projectRootPath,
                                                              const QUuid& noteID, const QUuid& id)
{
    const QString path = filePath(projectRootPath, noteID);
    auto timeline = checked(path);
    if (!timeline)
        return std::unexpected(timeline.error());
    if (timeline->versions.removeIf([&](const auto& each) { return each.id == id; }) == 0)
        return {};
    return write(path, VersionTimeline::timelineOf(timeline->text, timeline->versions));
}

std::expected<VersionFiles::Timeline, VersionHistoryError>
VersionFiles::checked(const QString& path) const
{
    const auto known = m_known.constFind(path);
    const bool isKnown = known != m_known.cend() && *known == FileStamp::of(path);
    auto bytes = bytesAt(path);
    if (!bytes)
        return std::unexpected(bytes.error());
    if (!*bytes)
        return Timeline();
    if (!isKnown) {
        if (const auto whole = VersionTimeline::decoded(**bytes); !whole)
            return damaged(path, whole.error());
    }
    auto versions = VersionTimeline::summaries(**bytes);
    if (!versions)
        return damaged(path, versions.error());
    return Timeline{**std::move(bytes), *std::move(versions)};
}

std::expected<void, VersionHistoryError> VersionFiles::write(const QString& path,
                                                             const QByteArray& text)
{
    m_known.remove(path);
    if (const auto written = m_write(path, text); !written)
        return failed(Code::NotWritten, written.error().text());
    m_known.insert(path, FileStamp::of(path));
    return {};
}

std::expected<QList<NoteVersionSummary>, VersionHistoryError>
VersionFiles::list(const QString& projectRootPath, const QUuid& noteID)
{
    const QString path = filePath(projectRootPath, noteID);
    const auto bytes = bytesAt(path);
    if (!bytes)
        return std::unexpected(bytes.error());
    if (!*bytes)
        return QList<NoteVersionSummary>();
    auto versions = VersionTimeline::summaries(**bytes);
    if (!versions)
        return damaged(path, versions.error());
    return *std::move(versions);
}

std::expected<NoteVersionSnapshot, VersionHistoryError>
VersionFiles::read(const QString& projectRootPath, const NoteVersionSummary& version)
{
    const QString path = filePath(projectRootPath, version.noteID);
    const auto [at, size] = version.piece;
    if (const auto piece = readFilePart(path, at, size)) {
        auto there = VersionTimeline::decodedPiece(*piece);
        if (there && there->id == version.id)
            return *std::move(there);
    }
    const auto bytes = bytesAt(path);
    if (!bytes)
        return std::unexpected(bytes.error());
    const auto versions = VersionTimeline::summaries(bytes->value_or("[]"));
    if (!versions)
        return damaged(path, versions.error());
    const auto found = std::ranges::find(*versions, version.id, &NoteVersionSummary::id);
    if (found == versions->end())
        return failed(Code::Missing, path);
    auto whole =
        VersionTimeline::decodedPiece((*bytes)->sliced(found->piece.at, found->piece.size));
    if (!whole)
        return damaged(path, whole.error());
    return *std::move(whole);
}

} // namespace orvane
