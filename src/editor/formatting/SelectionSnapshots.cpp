// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/formatting/SelectionSnapshots.h"

#include "editor/lists/ListEditing.h"
#include "editor/view/EditorView.h"
#include "text/layout/ParagraphLayout.h"
#include "text/store/TextStore.h"

namespace orvane {

namespace {

/// In a longer paragraph nobody looks for a list's marker.
constexpr qsizetype longestItem = 20'000;

void addCharacters(EditorSelectionSnapshot& snapshot, const CharacterStyle& style,
                   const EditorView& view)
{
    const TextFont& font = style.font ? *style.font : view.layout().baseFont();
    snapshot.fontName = font.family;
    snapshot.fontSize = font.size;
    snapshot.foregroundColor =
        style.foreground ? *style.foreground : RgbaColor::fromQColor(view.look().text.text);
    snapshot.highlightColor = style.background;
    snapshot.isBold = font.isBold();
    snapshot.isItalic = font.italic;
    snapshot.isUnderlined = style.underline != TextLine::none;
    snapshot.isStruckThrough = style.strikethrough != TextLine::none;
}

void addParagraph(EditorSelectionSnapshot& snapshot, const ParagraphStyle& style)
{
    snapshot.alignment = style.alignment;
    snapshot.lineSpacing = style.lineSpacing;
    snapshot.paragraphSpacingBefore = style.spacingBefore;
    snapshot.paragraphSpacingAfter = style.spacingAfter;
    snapshot.firstLineHeadIndent = style.firstLineHeadIndent;
    snapshot.headIndent = style.headIndent;
    snapshot.tailIndent = style.tailIndent;
    snapshot.defaultTabInterval = style.defaultTabInterval;
    snapshot.hyphenationFactor = style.hyphenationFactor;
    snapshot.keepsLinesTogether = style.keepLinesTogether;
    snapshot.keepWithNext = style.keepWithNext;
    snapshot.widowControl = style.widowControl;
    snapshot.paragraphBackgroundColor = style.background;
}

} // namespace

SelectionSnapshots::SelectionSnapshots(EditorView& view, const ListEditing& lists,
                                       const UserDefaults& defaults,
                                       NotificationCenter& notifications)
    : m_view(view)
    , m_lists(lists)
    , m_defaults(defaults)
    , m_notifications(notifications)
{}

void SelectionSnapshots::setTableSource(std::function<std::optional<EditorTableSnapshot>()> table)
{
    m_table = std::move(table);
}

void SelectionSnapshots::setNote(const std::optional<QUuid>& note)
{
    for (const QMetaObject::Connection& connection : m_connections)
        disconnect(connection);
    m_connections.clear();
    m_note = note;
    const auto published = std::exchange(m_published, std::nullopt);
    // Whoever tells of its table or image would go on with that.
    const bool isHeld =
        published && (published->snapshot.table || published->snapshot.selectedImage);
    if (isHeld && published->targetNoteID != note)
        m_notifications.post(editorSelectionSnapshotDidChange,
                             EditorSelectionChange{{}, published->targetNoteID});
    if (!note)
        return;
    const EditGateway& text = m_view.gateway();
    m_connections = {
        connect(&text, &EditGateway::textChanged, this, &SelectionSnapshots::schedule),
        connect(&text, &EditGateway::selectionChanged, this, &SelectionSnapshots::schedule),
        connect(&text, &EditGateway::typingStyleChanged, this, &SelectionSnapshots::schedule),
        connect(&m_defaults, &UserDefaults::changed, this,
                [this](const QString& key) {
                    if (key.startsWith(u"settings.editor."))
                        schedule();
                }),
    };
    postEditorSelectionSnapshot();
}

EditorSelectionSnapshot SelectionSnapshots::snapshot() const
{
    const TextStore& store = m_view.store();
    const TextRange selection = m_view.selection().range();
    EditorSelectionSnapshot snapshot;
    addCharacters(snapshot,
                  selection.isEmpty() ? *m_view.gateway().typingStyle()
                                      : *store.characterStyle(selection.location),
                  m_view);
    if (m_table)
        snapshot.table = m_table();
    addParagraph(snapshot, *store.paragraphStyle(selection.location));
    if (m_image)
        snapshot.selectedImage = m_image();
    const double bodySize = configuredSize(EditorParagraphStyleRole::body, m_defaults);
    snapshot.paragraphRole = role(snapshot.fontSize, bodySize, m_defaults);
    if (store.paragraphRange(selection.location).length > longestItem)
        return snapshot;
    if (const auto item = m_lists.listContext(selection.location)) {
        snapshot.listStyle = item->style;
        snapshot.listKind =
            rawValue(isNumbered(item->style) ? EditorListKind::numbered : EditorListKind::bullet);
    }
    return snapshot;
}

void SelectionSnapshots::schedule()
{
    if (std::exchange(m_isScheduled, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isScheduled = false;
            postEditorSelectionSnapshot();
        },
        Qt::QueuedConnection);
}

void SelectionSnapshots::postEditorSelectionSnapshot()
{
    if (!m_note)
        return;
    EditorSelectionChange now{snapshot(), m_note};
    if (now == m_published)
        return;
    m_published = now;
    m_notifications.post(editorSelectionSnapshotDidChange, now);
}

} // namespace orvane
