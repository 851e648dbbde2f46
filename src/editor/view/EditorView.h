// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/view/CaretNavigator.h"
#include "editor/view/EditorLook.h"
#include "editor/view/EditorSettings.h"
#include "editor/view/ExtensionList.h"
#include "editor/view/TextMime.h"
#include "text/attachments/AttachmentPainter.h"
#include "text/layout/TextPaint.h"
#include "text/store/EditGateway.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QHash>
#include <QPointer>

#include <memory>

class QMenu;

namespace orvane {

class InputMethodBridge;
class MouseSelection;
class PageScroller;
class TextStore;

/// Where the text stands in the view. Lengths are in points, so they grow with the zoom.
struct EditorGeometry {
    qreal leftMargin = 28;
    qreal rightMargin = 28;
    qreal verticalMargin = 28;
    /// Room below the last line, so that it can be scrolled up the view.
    qreal bottomPadding = 0;
    /// The lines never get wider; the column then stands in the middle. 0 for no limit.
    qreal widestColumn = 0;
    /// The width of a page with its margins, whatever the width of the view; the page stands in the
    /// middle of it. 0 to follow the view.
    qreal pageWidth = 0;
    /// Images that are higher are shown at this height. 0 for no limit.
    qreal tallestObject = 0;

    bool operator==(const EditorGeometry&) const = default;
};

/// The widget in which a person reads and writes one note.
///
/// It shows the store of an `EditGateway` and sends everything that a person does to that gateway.
/// The gateway belongs to someone else and outlives its being shown; until one is set, the view
/// shows a text of its own. Showing a note costs the same whatever its length, as does typing in
/// it: only what is seen is laid out.
///
/// Page positions are in points from the top left of the text, whatever the zoom.
class EditorView : public QAbstractScrollArea {
    Q_OBJECT
public:
    explicit EditorView(QWidget* parent = nullptr);
    ~EditorView() override;

    /// Shows the text of `gateway`, from its top; null for an empty text of the view's own.
    void setGateway(EditGateway* gateway);
    [[nodiscard]] EditGateway& gateway() const { return *m_gateway; }
    [[nodiscard]] const TextStore& store() const;
    /// How this view lays the text out; another one for each text.
    [[nodiscard]] ParagraphLayout& layout() const { return *m_layout; }

    /// Replaces the text without undo.
    void setPlainText(const QString& text);
    [[nodiscard]] QString plainText() const;

    // How it looks

    void setLook(const EditorLook& look);
    [[nodiscard]] const EditorLook& look() const { return m_look; }
    /// The font of text that names none.
    void setBaseFont(const TextFont& font);
    void setGeometry(const EditorGeometry& geometry);
    using QWidget::setGeometry;
    [[nodiscard]] const EditorGeometry& textGeometry() const { return m_geometry; }
    /// Pixels for a point, from 0.5 to 3. Nothing is laid out anew unless the column's width in
    /// points changes.
    void setZoom(qreal zoom);
    [[nodiscard]] qreal zoom() const { return m_zoom; }
    /// Dims everything outside `range`; nothing for no dimming. The range follows edits, and goes
    /// with the text.
    void setFocusRange(std::optional<TextRange> range);
    [[nodiscard]] const std::optional<TextRange>& focusRange() const { return m_focusRange; }
    /// The part of the view's height that stays free below the last line, when it is scrolled up as
    /// far as it goes: more than the geometry's padding where that is less.
    void setLeastShareBelow(qreal share);
    /// The room below the last line, in points.
    [[nodiscard]] qreal roomBelow() const;
    /// What stands above the text and scrolls with it, as wide as the viewport, whose child it
    /// becomes; null for nothing.
    void setHead(QWidget* head);
    /// In pixels. The text that is seen stays where it is, unless it is seen from its top.
    void setHeadHeight(int height);
    /// The room above the first line, in points.
    [[nodiscard]] qreal roomAbove() const
    {
        return m_geometry.verticalMargin + m_headHeight / m_zoom;
    }
    /// Whether some of the head is in sight.
    [[nodiscard]] bool showsHead() const;
    /// Who draws attachments; must outlive the view. Null for the view's own, which draws what
    /// attachments carry.
    void setObjectPainter(ObjectPainter* painter);
    /// Where the images of the text come from whose bytes are not in memory: for drawing, and at
    /// once for what leaves with its images. `readNow` may be called when the view is gone.
    void setImageSource(ImagePictures::Fetch fetch, ImageReader readNow);
    /// Draws images for whoever draws them beside the text.
    [[nodiscard]] AttachmentPainter& attachmentPainter() { return m_ownPainter; }
    /// Who decorates the paragraphs of `text` whenever this view shows it; must outlive the view or
    /// be taken away with null, as long as there is the text.
    void setDecorator(const EditGateway& text, const ParagraphDecorator* decorator);

    // What it does

    /// Plain views copy and paste characters only.
    void setFormatting(TextFormatting formatting) { m_formatting = formatting; }
    [[nodiscard]] TextFormatting formatting() const { return m_formatting; }
    /// By which what is copied and dragged has its headings.
    void setHeadingSizes(const HeadingSizes& sizes) { m_headingSizes = sizes; }
    [[nodiscard]] const HeadingSizes& headingSizes() const { return m_headingSizes; }
    void setEditable(bool editable);
    [[nodiscard]] bool isEditable() const;
    /// Extensions belong to someone else, who removes them before they go.
    void addExtension(EditorExtension* extension, ExtensionPriority priority);
    void removeExtension(EditorExtension* extension);

    // Selection and caret

    void setSelection(TextSelection selection, CaretSide side = CaretSide::lowerLine);
    [[nodiscard]] TextSelection selection() const;
    /// The stretches of text that are selected: one, or those of an extension's selection.
    [[nodiscard]] QList<TextRange> selectedRanges() const;
    void moveCaret(CaretMove move, SelectionMode mode);
    /// Scrolls as little as needed to show the caret.
    void ensureCaretVisible();
    /// What of the text lies in `range`, for the clipboard; with the picture where that is one
    /// image.
    [[nodiscard]] std::unique_ptr<QMimeData> textMimeOf(TextRange range) const;
    /// Emits `pasted` where a text from `data` brought, or left behind, more than text.
    void tellPasted(const ImportAccount& account, const QMimeData& data);
    /// Scrolls so that the caret's line begins at `share` of the view's height, as far as the text
    /// allows. Does nothing within one point.
    void scrollCaretTo(qreal share);
    void scrollToRange(TextRange range);

    // Page and view

    /// Where the text's top left stands in the viewport.
    [[nodiscard]] QPointF textOrigin() const;
    [[nodiscard]] QPointF toPage(QPointF viewportPoint) const;
    [[nodiscard]] QPointF toViewport(QPointF pagePoint) const;
    [[nodiscard]] QRectF toViewport(const QRectF& pageRect) const;
    /// The caret in the viewport; also where it is scrolled out of sight.
    [[nodiscard]] QRectF caretRect() const;
    [[nodiscard]] qsizetype positionAt(QPointF viewportPoint, CaretSide* side = nullptr) const;
    /// The address of the link at a point of the viewport, or an empty one.
    [[nodiscard]] QString linkAt(QPointF viewportPoint) const;
    /// Draws the part of the page that `pageRect` covers anew.
    void updatePage(const QRectF& pageRect);
    /// Fills `menu` with what fits the text at a point of the viewport.
    void fillContextMenu(QMenu& menu, QPointF viewportPoint);

    [[nodiscard]] QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

    /// Whether there is something to undo or redo now; asked by name, as of other text fields.
    Q_INVOKABLE bool isUndoAvailable() const;
    Q_INVOKABLE bool isRedoAvailable() const;

public slots:
    void undo();
    void redo();
    void cut();
    void copy();
    void paste();
    void pastePlain();
    /// As if these words were on the clipboard.
    void pastePlain(const QString& text);
    void deleteSelection();
    /// Drags what is selected away, as a press on it that moves does; while a button is held.
    void dragSelection();
    void selectAll();

signals:
    void textChanged(const orvane::TextChange& change);
    void selectionChanged();
    void linkActivated(const QString& address);
    /// A text of another program has come in that had more than text; `plainText` are its words.
    void pasted(const orvane::ImportAccount& account, const QString& plainText);
    /// A person has turned the wheel with Ctrl held; `steps` are notches, with parts of them.
    void zoomRequested(qreal steps);
    void scrolled();
    /// The head has come into sight or left it.
    void headShown(bool isShown);

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    friend class InputMethodBridge;
    friend class MouseSelection;
    friend class PageScroller;

    void connectGateway();
    [[nodiscard]] qreal columnWidth() const;
    void updateColumn();
    [[nodiscard]] qreal columnLeft() const;
    void onParagraphsChanged(const QTextBlock& first, const QTextBlock& last, qreal top,
                             qreal oldBottom);
    void select(TextSelection selection, CaretSide side);
    void onSelectionChanged();
    void moveContents(int pixels);
    void placeHead();
    /// Moves what is shown below a paragraph that has become higher or lower, where that is by
    /// whole pixels; false where it has to be drawn.
    bool moveBelow(qreal oldY, qreal newY);
    void updateSelectionBetween(TextRange before, TextRange after);
    void restartCaretBlink();
    void updateCaret();
    [[nodiscard]] bool showsCaret() const;
    bool handleKey(QKeyEvent* event);
    bool handleMoveKey(QKeyEvent* event);
    bool handleCommandKey(QKeyEvent* event);
    bool handleDeleteKey(QKeyEvent* event);
    bool runCommand(EditAction command);
    void typeText(const QString& text);
    void removeTo(qsizetype position, EditKind kind);
    bool insertFrom(const QMimeData& data, const QString& actionName, TextFormatting formatting);
    void pasteFrom(const QMimeData* data, TextFormatting formatting);
    [[nodiscard]] bool canPaste(const QMimeData* data) const;
    bool copySelected();
    void removeSelected(const QString& actionName);
    [[nodiscard]] EditorDrag dragOf(const QDropEvent& event) const;
    /// Where the view shows that a drag would drop; nothing where it can't be dropped.
    struct DropTarget {
        std::optional<CaretPlace> caret;
    };
    std::optional<DropTarget> dropTarget(const QDropEvent& event);
    Qt::DropAction takeDrop(const QDropEvent& event);
    void publishPrimarySelection();
    [[nodiscard]] std::unique_ptr<QMimeData> selectedMime() const;
    void setPointerHidden(bool hidden);
    void setDropCaret(std::optional<CaretPlace> place);

    std::unique_ptr<TextStore> m_ownStore;
    std::unique_ptr<EditGateway> m_ownGateway;
    EditGateway* m_gateway = nullptr;
    std::unique_ptr<ParagraphLayout> m_layout;
    QList<QMetaObject::Connection> m_connections;

    EditorLook m_look;
    EditorGeometry m_geometry;
    qreal m_leastShareBelow = 0;
    QPointer<QWidget> m_head;
    int m_headHeight = 0;
    bool m_showedHead = true;
    TextFont m_baseFont{editorFontFamilySetting.fallback, editorFontSizeSetting.fallback};
    static constexpr LineSettings lineSettings{1.6};
    AttachmentPainter m_ownPainter;
    ImageReader m_readImage;
    ObjectPainter* m_objectPainter = &m_ownPainter;
    QHash<const EditGateway*, const ParagraphDecorator*> m_decorators;
    qreal m_zoom = 1;
    TextFormatting m_formatting = TextFormatting::rich;
    HeadingSizes m_headingSizes;
    bool m_isEditable = true;
    std::optional<TextRange> m_focusRange;
    ExtensionList m_extensions;

    CaretNavigator m_navigator;
    CaretSide m_caretSide = CaretSide::lowerLine;
    CaretSide m_nextCaretSide = CaretSide::lowerLine; ///< of the selection that is being set
    TextSelection m_shownSelection;
    QRect m_shownCaret;
    QBasicTimer m_blinkTimer;
    bool m_blinkShows = true;
    std::optional<CaretPlace> m_dropCaret;

    std::unique_ptr<PageScroller> m_scroller;
    std::unique_ptr<MouseSelection> m_mouse;
    std::unique_ptr<InputMethodBridge> m_inputMethod;
};

} // namespace orvane
