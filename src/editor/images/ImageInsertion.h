// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/Services.h"
#include "text/attachments/ImageIntake.h"
#include "text/value/TextRange.h"

#include <QObject>
#include <QPointer>
#include <QThreadPool>

#include <functional>
#include <variant>

class QMimeData;
class QWidget;

namespace orvane {

class EditGateway;
class EditorView;

/// What is to become an image: a file, or bytes with what they are called.
struct ImageSource {
    QString path;
    QByteArray bytes; ///< counts where there is no path

    [[nodiscard]] QString name() const;
};

/// Whether data from elsewhere is images, not text with images in it.
[[nodiscard]] bool containsImagePasteboardData(const QMimeData& data);
/// The images in it: files by their paths, else the bytes of the best form.
[[nodiscard]] QList<ImageSource> droppedImageData(const QMimeData& data);

/// Brings images into the text of a view. Files are read and tried beside the main thread; what has
/// been taken then comes in where it was wanted, however the text has changed meanwhile, and what
/// hasn't is said with the reason. Main thread.
class ImageInsertion : public QObject {
    Q_OBJECT
public:
    ImageInsertion(EditorView& view, Questions& questions);
    ~ImageInsertion() override;

    using ChooseFiles = std::function<QStringList(QWidget* parent, bool isOne)>;
    /// Who asks a person for files, in the place of the desktop's dialog.
    void setChooseFiles(ChooseFiles choose) { m_chooseFiles = std::move(choose); }
    [[nodiscard]] QStringList chooseFiles(bool isOne) const;

    using Take = std::function<void(const QList<AcceptedImage>&)>;
    /// Tries the sources, at once where they are small; tells what is refused, and `take` of the
    /// rest, if there is any.
    void accept(const QList<ImageSource>& sources, Take take);
    /// Puts them into the text that is shown now, in the place of `range`.
    void insertAt(TextRange range, const QList<ImageSource>& sources);

signals:
    /// Images have come into the text.
    void inserted();

private:
    struct Tried {
        QList<AcceptedImage> images;
        QStringList refused; ///< sentences
    };
    [[nodiscard]] static Tried tried(const QList<ImageSource>& sources);
    void deliver(const Tried& result, const Take& take);
    void put(TextRange place, const QList<AcceptedImage>& images);

    EditorView& m_view;
    Questions& m_questions;
    ChooseFiles m_chooseFiles;
    QThreadPool m_pool;
};

} // namespace orvane
