// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/ImageCommands.h"
#include "editor/images/ImageHandles.h"
#include "editor/images/ImageInsertion.h"
#include "editor/images/ImagePlaces.h"
#include "editor/images/SelectedImageInfo.h"
#include "editor/view/EditorExtension.h"
#include "editor/view/EditorSettings.h"

#include <QObject>
#include <QPointer>

namespace orvane {

class CommandReceiver;
class EditorView;
class ImagePopover;
class Look;

/// Images in a text view: those that float are drawn behind and in front of the text, the selected
/// one has handles and a popover, and what is pasted and dropped as an image comes in. An image is
/// selected where the selection holds its character alone. Main thread.
class ImageTools final : public QObject, public EditorExtension {
    Q_OBJECT
public:
    /// Adds itself to `view`; all outlive it.
    ImageTools(EditorView& view, CommandReceiver& commands, Look& look, const Services& services);
    ~ImageTools() override;

    /// The view shows another text.
    void showText();
    [[nodiscard]] std::optional<SelectedImageInfo> selectedInfo() const;
    [[nodiscard]] ImageInsertion& insertion() { return m_insertion; }
    /// Images for a note that is not rich: at `range` of its text.
    using Offer = std::function<void(const QList<ImageSource>& sources, TextRange range)>;
    void setOffer(Offer offer) { m_offer = std::move(offer); }
    /// Inserts at once where the note is rich, else offers.
    void take(const QList<ImageSource>& sources, TextRange range);

    void paintBehindText(QPainter& painter, const EditorPaint& paint) override;
    void paintOverText(QPainter& painter, const EditorPaint& paint) override;
    bool mousePressed(const EditorMouse& mouse) override;
    void mouseMoved(const EditorMouse& mouse) override;
    void mouseReleased(const EditorMouse& mouse) override;
    std::optional<Qt::CursorShape> cursorAt(QPointF page) override;
    bool keyPressed(const QKeyEvent& event) override;
    [[nodiscard]] bool hasSelection() const override;
    [[nodiscard]] QList<TextRange> selectedRanges() const override;
    [[nodiscard]] std::unique_ptr<QMimeData> copySelection() const override;
    void removeSelection(const QString& actionName) override;
    [[nodiscard]] bool canTake(const QMimeData& data) const override;
    bool paste(const QMimeData& data) override;
    std::optional<DropFeedback> dragMoved(const EditorDrag& drag) override;
    bool drop(const EditorDrag& drag) override;
    void addToContextMenu(QMenu& menu, QPointF page, qsizetype position) override;

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// What `selectedInfo` tells may have changed beside selection and text.
    void infoChanged();

private:
    struct Drag {
        qsizetype position = 0;
        std::optional<ResizeHandle> handle; ///< none: the whole image is moved
        QPointF from;                       ///< on the page
        QSizeF startSize;
        QPointF startOffset;
        QPointF startOrigin;
        bool hasMoved = false;
    };

    void observeCommands();
    void chooseReplacement(const std::optional<QUuid>& image);
    [[nodiscard]] bool isRich() const;
    [[nodiscard]] std::optional<qsizetype> selected() const;
    [[nodiscard]] std::optional<qsizetype> imageAtPoint(QPointF page) const;
    [[nodiscard]] bool isOnText(QPointF page) const;
    [[nodiscard]] QRectF frameInView(qsizetype position) const;
    void select(qsizetype position);
    void endDrag();
    void paintFloating(QPainter& painter, const EditorPaint& paint, OrvaneNoteImageWrapMode mode,
                       qreal opacity);
    void onTextChanged(const TextChange& change);
    void onSelectionChanged();
    void openPopover();
    void closePopover();
    void placePopover();

    EditorView& m_view;
    CommandReceiver& m_commands;
    Look& m_look;
    Services m_services;
    ImagePlaces m_places;
    ImageInsertion m_insertion;
    Offer m_offer;
    std::optional<Drag> m_drag;
    std::optional<QUuid> m_shown; ///< the image that looks selected
    QPointer<ImagePopover> m_popover;
    bool m_opensPopover = false; ///< once the button is let go
};

} // namespace orvane
