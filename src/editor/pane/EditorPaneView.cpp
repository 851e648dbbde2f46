// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/pane/EditorPaneView.h"

#include "commands/EditorFormatNotifications.h"
#include "core/versions/NoteVersion.h"
#include "editor/page/PageFit.h"
#include "editor/page/PageTools.h"
#include "editor/pane/EditorTextHost.h"
#include "editor/pane/ImageOffer.h"
#include "editor/pane/NoteLinks.h"
#include "editor/pane/PasteStrip.h"
#include "editor/pane/StatusStrip.h"
#include "editor/pane/WritingTools.h"
#include "editor/session/CaretPlaces.h"
#include "editor/session/SlowNotes.h"
#include "editor/view/EditorView.h"
#include "text/store/TextStore.h"
#include "text/value/LayoutUnits.h"

#include <QAbstractButton>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QStackedLayout>
#include <QTimer>
#include <QVBoxLayout>

namespace orvane {

using namespace Qt::StringLiterals;

namespace {

constexpr int titleTop = 48;
constexpr int titleGap = 8;
/// What the text of a note in the Trash keeps of its ink.
constexpr double trashedInkShare = 0.78;
constexpr int leastPaperAboveTitle = 16;
constexpr int charactersPerLine = 73;
/// Counting a long note takes longer than a keystroke may, so it waits for a pause.
constexpr int countPause = 120;

template <typename... Settings>
bool isOneOf(const QString& key, const Settings&... settings)
{
    return ((key == settings.keyText()) || ...);
}

/// About how wide a line of `count` characters of prose is, in points. Measured by the font in
/// which the text is laid out, so that no other has to be opened.
double widthOfProse(const QString& family, double size, int count)
{
    static const QString sample = u"The tide figures stood in a single line, ruled twice, and "
                                  "under it a name she had never seen written down."_s;
    const QFont font = editorFont(family, size * layoutUnitsPerPoint);
    // Asked for at every change of the look, and the same but for another font.
    static std::pair<QFont, double> last;
    if (last.first != font || last.second == 0)
        last = {font, QFontMetricsF(font).horizontalAdvance(sample)};
    return last.second / layoutUnitsPerPoint * count / double(sample.size());
}

} // namespace

EditorPaneView::EditorPaneView(AppState& appState, Look& look, QWidget* parent)
    : SurfacePanel(look, Surface::Page, parent)
    , m_appState(appState)
    , m_session(appState)
    , m_library(appState.services())
    , m_stack(new QStackedLayout)
    , m_status(new StatusStrip(look, this))
    , m_countTimer(new QTimer(this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addLayout(m_stack, 1);
    layout->addWidget(m_status);
    m_stack->addWidget(makePage());
    m_tools =
        std::make_unique<WritingTools>(m_text->view(), m_library, appState.services(), look, *this);
    layout->insertWidget(0, &m_tools->formattingBar());
    layout->insertWidget(2, &m_tools->findStrip());
    m_tools->formattingBar().setNextByTab(m_title);
    m_status->addChoice(m_tools->languageButton());
    m_countTimer->setSingleShot(true);
    m_countTimer->setInterval(countPause);
    connect(m_countTimer, &QTimer::timeout, this, &EditorPaneView::updateCounts);
    connect(&look, &Look::changed, this, &EditorPaneView::applyHostLook);
    connectSession();
    connectTools();
    applyHostLook();
    m_text->view().setImageSource(
        [this](const ImageFile& file, auto take) { m_appState.readImage(file.hash(), take); },
        [app = QPointer(&m_appState)](const ImageFile& file) {
            return app ? app->imageBytes(file.hash()) : std::nullopt;
        });
    m_tools->images().setOffer([this](const QList<ImageSource>& sources, TextRange range) {
        offerImages(sources, range, m_session, m_appState, m_tools->images());
    });
    m_slowNotes = std::make_unique<SlowNotes>(m_text->view(), appState.services().defaults);
    m_slowNotes->begin(m_session.noteID(), m_session.gateway().store());
    m_tools->prepareText(m_session.gateway(), m_session.mode());
    placeCaret();
    m_text->showText(&m_session.gateway());
    m_tools->showText(m_session.noteID());
    m_slowNotes->pause();
    m_links = std::make_unique<NoteLinks>(m_text->view(), m_session, appState);
    connect(m_links.get(), &NoteLinks::linkSheetWanted, this, &EditorPaneView::linkSheetWanted);
    m_pageTools = std::make_unique<PageTools>(*m_text, appState.services(), look, *m_title);
    connect(m_status, &StatusStrip::zoomChosen, m_pageTools.get(), &PageTools::setZoom);
    m_status->setZoomChoices([this] { return m_pageTools->zoomChoices(); });
    connect(m_text, &EditorTextHost::textPlaced, this, &EditorPaneView::showZoom);
    connect(&m_text->view(), &EditorView::headShown, this, &EditorPaneView::tellTitle);
    connect(m_title, &QLineEdit::textChanged, this, &EditorPaneView::tellTitle);
    m_pasteStrip = new PasteStrip(m_text->view(), look, m_status->height(), *this);
    connect(this, &EditorPaneView::textAboutToChange, m_pasteStrip, &QWidget::hide);
    observeModeCommands();
    loadDraft();
    updateSavingState();
    // By Tab from the top to the foot: the strip was made before the page.
    m_text->view().installEventFilter(this);
    QWidget* last = &m_text->view();
    setTabOrder(m_title, last);
    for (QWidget* part :
         std::initializer_list<QWidget*>{&m_tools->findStrip(), m_pasteStrip, m_status}) {
        for (auto* each : part->findChildren<QWidget*>()) {
            if (each->focusPolicy() & Qt::TabFocus) {
                setTabOrder(last, each);
                last = each;
            }
        }
    }
}

EditorPaneView::~EditorPaneView()
{
    // The text goes before the view does.
    disconnect(&m_session, nullptr, this, nullptr);
    emit textAboutToChange();
    m_text->showText(nullptr);
    m_links.reset();
    m_pageTools.reset();
}

bool EditorPaneView::isInTable() const
{
    return m_tools->isInTable();
}

EditorView& EditorPaneView::textView() const
{
    return m_text->view();
}

QWidget& EditorPaneView::formattingBar() const
{
    return m_tools->formattingBar();
}

QWidget& EditorPaneView::offerPart() const
{
    return m_status->offerPart();
}

QWidget* EditorPaneView::makePage()
{
    auto* page = new QWidget(this);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    m_text = new EditorTextHost(page);
    m_head = new QWidget(m_text->view().viewport());
    auto* row = new QVBoxLayout(m_head);
    m_title = new QLineEdit(m_head);
    m_title->setFrame(false);
    m_title->setAccessibleName(tr("Title of the note"));
    m_title->setPlaceholderText(tr("Untitled"));
    // The field keeps 2 px on either side; the title stands in line with the text.
    m_title->setTextMargins(-2, 0, -2, 0);
    m_title->installEventFilter(this);
    m_head->installEventFilter(this);
    row->addWidget(m_title);
    layout->addWidget(m_text, 1);
    m_text->view().setHead(m_head);
    return page;
}

void EditorPaneView::setMakeEmptyState(std::function<QWidget*(QWidget*)> make)
{
    m_makeEmptyState = std::move(make);
    showPageOrEmptiness();
}

void EditorPaneView::connectSession()
{
    connect(&m_session, &EditorSession::draftLoaded, this, &EditorPaneView::loadDraft);
    connect(&m_session, &EditorSession::dirtyChanged, this, &EditorPaneView::updateSavingState);
    connect(&m_session, &EditorSession::trashedChanged, this, [this] {
        updateEditable();
        updateSavingState();
    });
    connect(&m_session, &EditorSession::refusalChanged, this, &EditorPaneView::updateSavingState);
    connect(&m_session, &EditorSession::textAboutToBeReplaced, this,
            &EditorPaneView::textAboutToChange);
    connect(&m_session, &EditorSession::textReplaced, this, [this] {
        m_slowNotes->begin(m_session.noteID(), m_session.gateway().store());
        applyHostLook();
        m_tools->prepareText(m_session.gateway(), m_session.mode());
        placeCaret();
        m_text->showText(&m_session.gateway());
        updateMode();
        emit textChanged();
        m_slowNotes->pause();
    });
    connect(&m_session, &EditorSession::longTextWritten, this,
            [this] { m_slowNotes->begin(m_session.noteID(), m_session.gateway().store()); });
    connect(&m_session, &EditorSession::baseFontChanged, this, &EditorPaneView::applyHostLook);
    connect(&m_session, &EditorSession::bodyEdited, m_countTimer, qOverload<>(&QTimer::start));
    connect(m_status, &StatusStrip::modeChosen, &m_session, &EditorSession::setMode);
    UserDefaults& defaults = m_appState.services().defaults;
    connect(m_status, &StatusStrip::widthLockChosen, this,
            [&defaults](bool locked) { editorWidthLockSetting.write(defaults, locked); });
    connect(&defaults, &UserDefaults::changed, this, &EditorPaneView::settingChanged);
    m_status->setWidthLocked(editorWidthLockSetting.read(defaults));
    connect(m_text, &EditorTextHost::leftAtTop, this, &EditorPaneView::focusTitle);
    connect(m_title, &QLineEdit::textEdited, &m_session, &EditorSession::setTitle);
    connect(&m_appState.projectSession(), &ProjectSession::saveFailureChanged, this,
            &EditorPaneView::updateSavingState);
    connect(&m_appState.projectSession(), &ProjectSession::currentProjectChanged, this, [this] {
        updateEditable();
        updateSavingState();
    });
}

void EditorPaneView::connectTools()
{
    connect(this, &EditorPaneView::textAboutToChange, this, [this] {
        rememberCaret();
        m_tools->leaveText();
    });
    connect(this, &EditorPaneView::textChanged, this,
            [this] { m_tools->showText(m_session.noteID()); });
    connect(&m_session, &EditorSession::draftLoaded, this, [this](FindControls find) {
        if (find == FindControls::reset)
            m_tools->findStrip().reset();
    });
}

void EditorPaneView::applyHostLook()
{
    const UserDefaults& defaults = m_appState.services().defaults;
    const TextFont font = m_session.baseFont();
    RichTextViewRepresentable host;
    host.noteID = m_session.noteID();
    host.editorMode = m_session.mode();
    host.fontName = font.family;
    host.fontSize = font.size;
    host.headingSizes = m_session.headingSizes();
    host.visualZoom = qBound(0.5, editorDisplayZoomSetting.read(defaults), 3.0);
    host.pageViewEnabled = pageViewEnabledSetting.read(defaults);
    host.pageMargins = {pageMarginLeftSetting.read(defaults), pageMarginTopSetting.read(defaults),
                        pageMarginRightSetting.read(defaults),
                        pageMarginBottomSetting.read(defaults)};
    host.rulerVisible = host.noteID && host.editorMode == EditorMode::richText &&
                        rulerVisibleSetting.read(defaults);
    host.look = editorLook(look().tokens(),
                           host.pageViewEnabled ? WritingGround::paper : WritingGround::openPage,
                           focusModeDimOpacitySetting.read(defaults));
    if (m_session.isTrashed())
        host.look = withInkShare(host.look, trashedInkShare);
    host.columnWidth =
        qRound(widthOfProse(font.family, font.size, charactersPerLine) * host.visualZoom);
    host.bottomDocumentPadding = bottomDocumentPaddingSetting.read(defaults);
    host.isEditable = m_session.isEditable();
    m_text->applyParent(host);
    m_title->setFont(editorFont(font.family, 28, QFont::Bold));
    QPalette palette = m_title->palette();
    palette.setColor(QPalette::Base, host.look.text.page);
    palette.setColor(QPalette::Text, host.look.text.text);
    palette.setColor(QPalette::PlaceholderText, host.look.text.label);
    m_title->setPalette(palette);
    placeTitle();
}

void EditorPaneView::resizeEvent(QResizeEvent* event)
{
    SurfacePanel::resizeEvent(event);
    placeTitle();
}

void EditorPaneView::placeTitle()
{
    const TextColumn column = m_text->columnIn(width());
    const int seen = width() - m_text->view().verticalScrollBar()->sizeHint().width();
    const auto& sheet = m_text->parameters().look.sheet;
    int top = titleTop;
    if (sheet) {
        // On paper the title stands within the upper margin, so that the text begins below it.
        const int title = m_title->sizeHint().height() + titleGap;
        top = deskAbovePage + qMax(column.topMargin - title, leastPaperAboveTitle);
    }
    m_head->layout()->setContentsMargins(column.left, top,
                                         qMax(0, seen - column.left - column.width), titleGap);
    m_text->view().setHeadHeight(m_head->sizeHint().height());
}

bool EditorPaneView::eventFilter(QObject* watched, QEvent* event)
{
    // The title stands in the text's view and comes before the text.
    if (watched == &m_text->view() && event->type() == QEvent::FocusIn &&
        static_cast<QFocusEvent*>(event)->reason() == Qt::TabFocusReason && m_title->isVisible())
        m_title->setFocus(Qt::TabFocusReason);
    if (event->type() != QEvent::KeyPress)
        return SurfacePanel::eventFilter(watched, event);
    // What the title has no use for is not for the text, in which it stands.
    if (watched == m_head) {
        event->accept();
        return true;
    }
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (watched == m_title && (key == Qt::Key_Down || key == Qt::Key_Return ||
                               key == Qt::Key_Enter || key == Qt::Key_Tab)) {
        focusText();
        return true;
    }
    if (watched == m_title && key == Qt::Key_Backtab) {
        focusBeforeText();
        return true;
    }
    return SurfacePanel::eventFilter(watched, event);
}

void EditorPaneView::focusBeforeText()
{
    const QWidget* view = &m_text->view();
    for (QWidget* each = view->previousInFocusChain(); each != view;
         each = each->previousInFocusChain()) {
        if ((each->focusPolicy() & Qt::TabFocus) && each->isVisible() && each->isEnabled() &&
            each->window() == window() && !view->isAncestorOf(each))
            return each->setFocus(Qt::BacktabFocusReason);
    }
}

void EditorPaneView::focusTitle()
{
    m_text->view().verticalScrollBar()->setValue(0);
    if (m_session.noteID())
        m_title->setFocus(Qt::OtherFocusReason);
    m_title->selectAll();
}

void EditorPaneView::setKeyTexts(const KeyTextOf& keyTextOf)
{
    m_tools->formattingBar().setKeyTexts(keyTextOf);
}

void EditorPaneView::focusText()
{
    m_text->view().setFocus(Qt::OtherFocusReason);
}

// Who comes back to a note doesn't wait for what stands in its place.
void EditorPaneView::showPageOrEmptiness()
{
    if (m_session.noteID())
        return m_stack->setCurrentIndex(0);
    if (!isVisible() || !m_makeEmptyState)
        return;
    if (m_stack->count() == 1) {
        QWidget* empty = m_makeEmptyState(this);
        m_stack->addWidget(empty);
        QWidget* last = m_title;
        for (auto* button : empty->findChildren<QAbstractButton*>()) {
            setTabOrder(last, button);
            last = button;
        }
    }
    m_stack->setCurrentIndex(1);
}

void EditorPaneView::showEvent(QShowEvent* event)
{
    SurfacePanel::showEvent(event);
    showPageOrEmptiness();
}

void EditorPaneView::loadDraft()
{
    const EditorDraft& draft = m_session.draft();
    showPageOrEmptiness();
    if (m_title->text() != draft.title)
        m_title->setText(draft.title);
    m_title->setCursorPosition(0);
    m_status->endOffer();
    showZoom();
    tellTitle();
    updateEditable();
    updateMode();
    updateCounts();
    updateSavingState();
}

void EditorPaneView::updateEditable()
{
    const bool editable = m_session.isEditable();
    m_title->setReadOnly(!editable);
    applyHostLook();
    m_tools->findStrip().setEditable(editable);
    m_tools->formattingBar().setEditable(editable);
}

void EditorPaneView::updateCounts()
{
    m_countTimer->stop();
    if (!m_session.noteID())
        return m_status->setCounts({}, 0);
    const QString body = m_session.currentBodyPlain();
    const int words = wordCount(body);
    m_status->setCounts(words, body.size());
    emit counted(*m_session.noteID(), words, body.size());
}

void EditorPaneView::showZoom()
{
    m_status->setZoom(m_session.noteID() ? std::optional(m_text->view().zoom()) : std::nullopt);
}

/// A note that is shown for the first time in this run stands where it was left in the last one.
void EditorPaneView::placeCaret()
{
    m_caretNote = m_session.noteID();
    if (!m_caretNote || m_placed.contains(*m_caretNote))
        return;
    m_placed.insert(*m_caretNote);
    EditGateway& gateway = m_session.gateway();
    const UserDefaults& defaults = m_appState.services().defaults;
    const auto place = CaretPlaces::placeIn(defaults, *m_caretNote);
    if (place && gateway.selection() == TextSelection())
        gateway.setSelection(TextSelection::caret(std::min(*place, gateway.store().length())));
}

void EditorPaneView::rememberCaret()
{
    if (!m_caretNote)
        return;
    CaretPlaces::remember(m_appState.services().defaults, *m_caretNote,
                          m_text->view().selection().position);
    m_caretNote.reset();
}

void EditorPaneView::openLink(const QString& address)
{
    m_links->open(address);
}

void EditorPaneView::tellTitle()
{
    const bool isOut = m_session.noteID() && !m_text->view().showsHead();
    const QString title = m_title->text().simplified();
    emit titleOutOfSight(!isOut ? QString() : title.isEmpty() ? tr("Untitled") : title);
}

void EditorPaneView::observeModeCommands()
{
    const auto observe = [this](const Notification<CommandTarget>& command, EditorMode mode) {
        m_observations.push_back(m_appState.services().notifications.observe(
            command, [this, mode](const CommandTarget& target) {
                const auto& shown = m_session.noteID();
                if (shown && (target.noteID ? target.noteID == shown : isVisible()))
                    m_session.setMode(mode);
            }));
    };
    observe(AppCommandEvents::writeRichText, EditorMode::richText);
    observe(AppCommandEvents::writePlainText, EditorMode::plainText);
    observe(AppCommandEvents::writeMarkdown, EditorMode::markdown);
    connect(m_tools.get(), &WritingTools::formattingRefused, this,
            &EditorPaneView::offerFormatting);
    connect(m_status, &StatusStrip::offerLeft, this, &EditorPaneView::focusText);
}

void EditorPaneView::offerFormatting(const QByteArray& command, const std::function<void()>& act)
{
    namespace Format = EditorFormatNotifications;
    const QUuid note = *m_session.noteID();
    if (m_offered.contains(note))
        return;
    m_offered.insert(note);
    const auto isAny = [&](const auto&... commands) {
        return ((command == commands.name) || ...);
    };
    const QString text = isAny(Format::bold)            ? tr("Plain Text has no bold.")
                         : isAny(Format::italic)        ? tr("Plain Text has no italics.")
                         : isAny(Format::underline)     ? tr("Plain Text has no underlining.")
                         : isAny(Format::strikethrough) ? tr("Plain Text has no strikethrough.")
                         : isAny(Format::superscript, Format::subscript)
                             ? tr("Plain Text has no raised or lowered letters.")
                         : isAny(AppCommandEvents::applyHeading1, AppCommandEvents::applyHeading2,
                                 AppCommandEvents::applyHeading3, AppCommandEvents::applyHeading4,
                                 AppCommandEvents::applyHeading5, AppCommandEvents::applyHeading6)
                             ? tr("Plain Text has no headings.")
                             : tr("Plain Text has no formatting.");
    m_status->offer(text, tr("Make This Note Rich Text"), [this, note, act] {
        if (m_session.noteID() != note)
            return;
        const TextSelection selection = m_text->view().selection();
        m_session.setMode(EditorMode::richText);
        if (m_session.mode() != EditorMode::richText)
            return;
        m_text->view().setSelection(selection);
        act();
        focusText();
    });
}

void EditorPaneView::updateMode()
{
    if (m_session.mode() != EditorMode::plainText)
        m_status->endOffer();
    m_status->setMode(m_session.noteID() ? std::optional(m_session.mode()) : std::nullopt);
}

void EditorPaneView::settingChanged(const QString& key)
{
    if (key == editorWidthLockSetting.keyText())
        m_status->setWidthLocked(editorWidthLockSetting.read(m_appState.services().defaults));
    else if (isOneOf(key, editorDisplayZoomSetting, bottomDocumentPaddingSetting,
                     focusModeDimOpacitySetting, pageViewEnabledSetting, pageMarginTopSetting,
                     pageMarginBottomSetting, pageMarginLeftSetting, pageMarginRightSetting,
                     rulerVisibleSetting, headingTitleSizeSetting, heading1SizeSetting,
                     heading2SizeSetting, heading3SizeSetting, heading4SizeSetting,
                     heading5SizeSetting))
        applyHostLook();
}

void EditorPaneView::updateSavingState()
{
    SavingState state;
    const auto& failure = m_appState.projectSession().saveFailure();
    if (m_appState.projectSession().isReadOnly()) {
        state.kind = SavingState::Kind::ReadOnly;
        state.detail = tr("The project's folder can't be written, so its notes can be read but not "
                          "changed.");
    } else if (failure) {
        state.kind = SavingState::Kind::Failing;
        state.since = failure->since.toLocal().toString(u"HH:mm"_s);
        state.detail = tr("Your changes are kept in memory and are written as soon as saving works "
                          "again.\n%1")
                           .arg(failure->error);
    } else if (m_session.isTrashed()) {
        state.kind = SavingState::Kind::Trashed;
        state.detail = tr("A note in the Trash can be read but not changed.");
    } else if (m_session.noteID() && !m_session.isReadable()) {
        state.kind = SavingState::Kind::Unreadable;
        state.detail = tr("The disk doesn’t give its text now, so it can’t be changed. What is "
                          "stored is left as it is; select the note again to try once more.");
    } else if (const auto refusal = m_session.refusal()) {
        state.kind = SavingState::Kind::Refused;
        state.detail = *refusal == Refusal::NotThere
                           ? tr("This note is no longer in the project. What was typed last is "
                                "only in this window; copy it to another note to keep it.")
                           : tr("Notes can’t be changed now. What was typed last is kept while the "
                                "project is open and is saved once changes are possible again.");
    } else if (m_session.noteID()) {
        state.kind = m_session.isDirty() ? SavingState::Kind::Edited : SavingState::Kind::Saved;
    }
    m_status->setSavingState(state);
}

} // namespace orvane
