// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/commands/CommandPalette.h"

#include "shell/commands/CommandPaletteDelegate.h"
#include "shell/commands/CommandPaletteModel.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QVBoxLayout>

namespace orvane {

namespace {

constexpr int paletteWidth = 620;
constexpr int fieldHeight = 52;
constexpr int longestList = 420;
constexpr int linesPerPage = 8;
constexpr int fieldFontPixels = 17;

std::vector<PaletteCommand> commandsThatWouldAct(const CommandCenter& commands)
{
    std::vector<PaletteCommand> listed;
    for (const CommandSection& section : commandSections()) {
        for (const Command& command : section.commands) {
            if (command.palette == PaletteListing::Listed && commands.wouldAct(command))
                listed.push_back({&command, commandTitle(command),
                                  menuTitle(section.menu).remove(u'&'), commands.keyText(command)});
        }
    }
    return listed;
}

std::vector<PaletteNote> notesOf(const AppState& appState)
{
    std::vector<PaletteNote> notes;
    if (appState.projectSession().rootPresentationMode() != RootPresentationMode::Editor)
        return notes;
    notes.reserve(size_t(appState.notes().size()));
    for (const Shared<NoteRecord>& note : appState.notes().records()) {
        if (note->folderID != FolderRecord::trashFolderID)
            notes.push_back({note->id, note->titleForList(), note->folderID, note->updatedAt,
                             note->isEmbeddedPDF()});
    }
    return notes;
}

} // namespace

CommandPalette::CommandPalette(AppState& appState, CommandCenter& commands, Look& look)
    : Sheet(look)
    , m_appState(appState)
    , m_commands(commands)
    , m_model(new CommandPaletteModel(
          PaletteSearch(commandsThatWouldAct(commands), notesOf(appState)),
          [&appState](const QUuid& container) {
              const FolderRecord* folder = appState.folder(container);
              return folder ? folder->titleForList() : QString();
          },
          this))
    , m_field(new QLineEdit(this))
    , m_list(new QListView(this))
{
    setAccessibleName(tr("Command Palette"));
    m_field->setFrame(false);
    m_field->setFixedHeight(fieldHeight);
    m_field->setAccessibleName(tr("Find a command or note"));
    m_field->setPlaceholderText(tr("Find a command or note"));
    m_field->addAction(look.icon(Symbol::Search, Surface::Card, &SurfaceTokens::textSecondary),
                       QLineEdit::LeadingPosition);
    m_field->installEventFilter(this);
    QFont font = interfaceFont(TextStyle::Body);
    font.setPixelSize(fieldFontPixels);
    m_field->setFont(font);

    m_list->setModel(m_model);
    m_list->setItemDelegate(new CommandPaletteDelegate(look, m_list));
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setMouseTracking(true);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setAccessibleName(tr("Commands and notes"));
    m_list->viewport()->setAutoFillBackground(false);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(1, 1, 1, 9);
    column->setSpacing(1);
    auto* field = new QVBoxLayout;
    field->setContentsMargins(12, 0, 12, 0);
    field->addWidget(m_field);
    column->addLayout(field);
    column->addWidget(m_list);
    m_nothing = makeLabel({}, TextStyle::Body, LabelInk::Secondary, this);
    m_nothing->setContentsMargins(18, 14, 18, 6);
    m_nothing->setWordWrap(true);
    column->addWidget(m_nothing);
    setFixedWidth(paletteWidth);
    connect(m_field, &QLineEdit::textChanged, this, &CommandPalette::search);
    connect(m_list, &QListView::clicked, this, &CommandPalette::take);
    connect(m_list, &QListView::entered, m_list, [this](const QModelIndex& index) {
        if (m_model->flags(index).testFlag(Qt::ItemIsSelectable))
            m_list->setCurrentIndex(index);
    });
    search({});
}

CommandPalette::~CommandPalette() = default;

QWidget* CommandPalette::initialFocus()
{
    return m_field;
}

void CommandPalette::search(const QString& text)
{
    m_model->setQuery(text);
    m_list->scrollToTop();
    m_list->setCurrentIndex(m_model->best());
    const bool isFound = m_model->rowCount() > 0;
    m_nothing->setText(tr("No command and no note has “%1” in its name.").arg(text.trimmed()));
    m_nothing->setVisible(!isFound);
    m_list->setVisible(isFound);
    fitHeight();
}

void CommandPalette::fitHeight()
{
    int height = 0;
    for (int row = 0; row < m_model->rowCount() && height < longestList; ++row)
        height += m_list->sizeHintForIndex(m_model->index(row)).height();
    m_list->setFixedHeight(std::min(height, longestList));
    layout()->activate();
    resize(paletteWidth, sizeHint().height());
    update();
}

void CommandPalette::step(int by)
{
    const QModelIndex reached = m_model->stepped(m_list->currentIndex(), by);
    m_list->setCurrentIndex(reached);
    // The head of a section comes into view with its first line.
    if (reached.row() == 1)
        m_list->scrollToTop();
}

void CommandPalette::take(const QModelIndex& index)
{
    if (!index.isValid() || !m_model->flags(index).testFlag(Qt::ItemIsSelectable))
        return;
    const Command* command = m_model->command(index);
    const auto note = m_model->note(index);
    // The window is as it was before the palette when the command runs.
    close();
    if (command)
        m_commands.run(*command);
    else if (note)
        m_appState.openNote(*note);
}

bool CommandPalette::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_field || event->type() != QEvent::KeyPress)
        return Sheet::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Down:
        step(1);
        return true;
    case Qt::Key_Up:
        step(-1);
        return true;
    case Qt::Key_PageDown:
        step(linesPerPage);
        return true;
    case Qt::Key_PageUp:
        step(-linesPerPage);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        take(m_list->currentIndex());
        return true;
    default:
        return false;
    }
}

void CommandPalette::paintEvent(QPaintEvent* event)
{
    Sheet::paintEvent(event);
    QPainter(this).fillRect(1, fieldHeight + 1, width() - 2, 1,
                            look().tokens().on(Surface::Card).border);
}

} // namespace orvane
