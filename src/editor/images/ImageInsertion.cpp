// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/images/ImageInsertion.h"

#include "editor/images/ImageEditing.h"
#include "editor/view/EditorView.h"
#include "text/attachments/AttachmentManager.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMimeData>
#include <QStandardPaths>
#include <QUrl>

#include <algorithm>

namespace orvane {

namespace {

using namespace Qt::StringLiterals;

/// What is tried in a few milliseconds, so that a small picture is there with the key that pastes
/// it.
constexpr qsizetype fewBytes = 64 * 1024;

/// The forms in which image files travel, from the best.
constexpr QLatin1StringView imageTypes[] = {"image/svg+xml"_L1, "image/png"_L1, "image/jpeg"_L1,
                                            "image/webp"_L1, "image/gif"_L1};

bool isWithText(const QMimeData& data)
{
    return data.hasText() && !data.text().trimmed().isEmpty();
}

QStringList imagePaths(const QMimeData& data)
{
    QStringList paths;
    for (const QUrl& url : data.urls()) {
        if (!url.isLocalFile() || !isNamedAsImage(url.toLocalFile()))
            return {};
        paths.append(url.toLocalFile());
    }
    return paths;
}

QStringList askForFiles(QWidget* parent, bool isOne)
{
    QStringList patterns;
    for (const QString& suffix : imageSuffixes())
        patterns.append("*."_L1 + suffix);
    const QString filter = ImageInsertion::tr("Images (%1)").arg(patterns.join(u' '));
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    if (!isOne)
        return QFileDialog::getOpenFileNames(parent, ImageInsertion::tr("Insert Image"), folder,
                                             filter);
    const QString path =
        QFileDialog::getOpenFileName(parent, ImageInsertion::tr("Replace Image"), folder, filter);
    return path.isEmpty() ? QStringList() : QStringList{path};
}

} // namespace

QString ImageSource::name() const
{
    return path.isEmpty() ? ImageInsertion::tr("The image") : QFileInfo(path).fileName();
}

bool containsImagePasteboardData(const QMimeData& data)
{
    if (data.hasUrls())
        return !imagePaths(data).isEmpty();
    if (isWithText(data))
        return false;
    return data.hasImage() || std::ranges::any_of(imageTypes, [&](QLatin1StringView type) {
               return data.hasFormat(type);
           });
}

QList<ImageSource> droppedImageData(const QMimeData& data)
{
    QList<ImageSource> sources;
    for (const QString& path : imagePaths(data))
        sources.append({path, {}});
    if (!sources.isEmpty() || !containsImagePasteboardData(data))
        return sources;
    for (const QLatin1StringView type : imageTypes) {
        if (QByteArray bytes = data.data(type); !bytes.isEmpty())
            return {{QString(), std::move(bytes)}};
    }
    if (auto png = AttachmentManager::pngData(qvariant_cast<QImage>(data.imageData())))
        sources.append({QString(), *std::move(png)});
    return sources;
}

ImageInsertion::ImageInsertion(EditorView& view, Questions& questions)
    : m_view(view)
    , m_questions(questions)
    , m_chooseFiles(askForFiles)
{
    m_pool.setMaxThreadCount(1);
}

ImageInsertion::~ImageInsertion()
{
    m_pool.clear();
    m_pool.waitForDone();
}

QStringList ImageInsertion::chooseFiles(bool isOne) const
{
    return m_chooseFiles(m_view.window(), isOne);
}

ImageInsertion::Tried ImageInsertion::tried(const QList<ImageSource>& sources)
{
    Tried result;
    for (const ImageSource& source : sources) {
        const auto accepted =
            source.path.isEmpty() ? acceptImage(source.bytes) : acceptImageFile(source.path);
        if (accepted)
            result.images.append(*accepted);
        else
            result.refused.append(messageFor(accepted.error(), source.name()));
    }
    return result;
}

void ImageInsertion::accept(const QList<ImageSource>& sources, Take take)
{
    if (sources.isEmpty())
        return;
    const auto size = [](const ImageSource& source) {
        return source.path.isEmpty() ? source.bytes.size() : QFileInfo(source.path).size();
    };
    if (sources.size() == 1 && size(sources.first()) <= fewBytes)
        return deliver(tried(sources), take);
    m_pool.start([this, sources, take = std::move(take)] {
        // What waits to be told is dropped when this goes, which waits for the thread.
        QMetaObject::invokeMethod(
            this, [this, result = tried(sources), take] { deliver(result, take); },
            Qt::QueuedConnection);
    });
}

void ImageInsertion::deliver(const Tried& result, const Take& take)
{
    if (!result.images.isEmpty())
        take(result.images);
    if (result.refused.isEmpty())
        return;
    Question question;
    question.title =
        result.images.isEmpty() ? tr("Nothing was inserted") : tr("Not all of it was inserted");
    question.text = result.refused.join(u'\n');
    question.buttons = {tr("OK")};
    m_questions.ask(question);
}

void ImageInsertion::insertAt(TextRange range, const QList<ImageSource>& sources)
{
    EditGateway* text = &m_view.gateway();
    struct Place {
        TextRange range;
        QMetaObject::Connection following;
    };
    auto place = std::make_shared<Place>(Place{range, {}});
    place->following = connect(text, &EditGateway::textChanged, this,
                               [place = std::weak_ptr(place)](const TextChange& change) {
                                   if (const auto held = place.lock())
                                       held->range = followed(held->range, change);
                               });
    accept(sources, [this, place, text = QPointer(text)](const QList<AcceptedImage>& images) {
        disconnect(place->following);
        if (text == &m_view.gateway())
            return put(place->range, images);
        Question question;
        question.title = tr("Nothing was inserted");
        question.text = tr("Another note was opened before the images were read. They are where "
                           "they were; insert them again.");
        question.buttons = {tr("OK")};
        m_questions.ask(question);
    });
}

void ImageInsertion::put(TextRange place, const QList<AcceptedImage>& images)
{
    EditGateway& text = m_view.gateway();
    const TextSelection before = text.selection();
    const bool isThere = before.range() == place;
    const qsizetype lengthBefore = m_view.store().length();
    text.setSelection(TextSelection::of(place));
    if (!ImageEditing::insert(text, images)) {
        text.setSelection(before);
        return;
    }
    if (!isThere) {
        // Whoever wrote on elsewhere stays there.
        const TextChange change{place.location, place.length,
                                place.length + m_view.store().length() - lengthBefore};
        const TextRange kept = followed(before.range(), change);
        text.setSelection(TextSelection::of(kept));
    } else {
        m_view.ensureCaretVisible();
    }
    emit inserted();
}

} // namespace orvane
