// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/binder/IconsAndTitlesWindow.h"

#include "appearance/Contrast.h"
#include "appearance/CoverColors.h"
#include "appearance/Drawing.h"
#include "appearance/IconChoices.h"
#include "appearance/OrvaneStyle.h"
#include "shell/layout/WindowPlacement.h"
#include "shell/shortcuts/KeyRouting.h"
#include "shell/window/ElidedLabel.h"

#include <QAbstractListModel>
#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTimer>

namespace orvane {

/// The icons that match what is searched for.
class IconGridModel final : public QAbstractListModel {
public:
    enum Role { NameRole = Qt::UserRole, ChosenRole };

    using QAbstractListModel::QAbstractListModel;

    void setChoices(const QList<IconChoice>& choices)
    {
        beginResetModel();
        m_choices = choices;
        endResetModel();
    }
    void setChosen(const QString& name)
    {
        m_chosen = name;
        if (!m_choices.isEmpty())
            emit dataChanged(index(0), index(int(m_choices.size()) - 1));
    }
    [[nodiscard]] int rowOf(const QString& name) const
    {
        for (int row = 0; row < m_choices.size(); ++row) {
            if (m_choices.at(row).name == name)
                return row;
        }
        return -1;
    }
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_choices.size());
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override
    {
        const IconChoice choice = m_choices.value(index.row());
        switch (role) {
        case Qt::DisplayRole:
        case Qt::ToolTipRole:
            return choice.title;
        case Qt::AccessibleTextRole:
            return choice.name == m_chosen
                       ? QCoreApplication::translate("IconGridModel", "%1, chosen")
                             .arg(choice.title)
                       : choice.title;
        case NameRole:
            return choice.name;
        case ChosenRole:
            return choice.name == m_chosen;
        default:
            return {};
        }
    }

private:
    QList<IconChoice> m_choices;
    QString m_chosen;
};

namespace {

constexpr int padding = 24;
constexpr int cell = 44;
constexpr int pictureSize = 48;
constexpr int coverDot = 14;
/// Typing is applied when it pauses, so that a title isn't kept letter by letter.
constexpr int titlePause = 400;

class IconCell final : public QStyledItemDelegate {
public:
    IconCell(const Look& look, QObject* parent)
        : QStyledItemDelegate(parent)
        , m_look(look)
    {}
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override
    {
        return {cell, cell};
    }
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        const SurfaceTokens& t = m_look.tokens().on(Surface::Window);
        const QRect ground = option.rect.adjusted(2, 2, -2, -2);
        const bool chosen = index.data(IconGridModel::ChosenRole).toBool();
        QColor fill = t.ground;
        if (chosen)
            fill = blended(t.accent, 0.16, fill);
        else if (option.state.testFlag(QStyle::State_MouseOver))
            fill = blended(t.text, 0.06, fill);
        drawPanel(*painter, ground, 6, fill, chosen ? t.accent : QColor());
        const bool current = option.state.testFlag(QStyle::State_Selected);
        if (current && option.widget && option.widget->hasFocus())
            drawFocusRing(*painter, ground, 6, t.accent);
        drawStoredIcon(*painter, ground, index.data(IconGridModel::NameRole).toString(), 20,
                       readableInk(chosen ? t.accent : t.icon, fill, iconContrast));
    }

private:
    const Look& m_look;
};

/// The item's picture on a tinted tile.
class PictureTile final : public QWidget {
public:
    PictureTile(const Look& look, QWidget* parent)
        : QWidget(parent)
        , m_look(look)
    {
        setFixedSize(pictureSize, pictureSize);
    }
    /// A project's, "#RRGGBB" or empty.
    void setCover(const std::optional<QString>& cover)
    {
        m_cover = cover;
        update();
    }
    void setPicture(const QString& storedIcon, Symbol otherwise)
    {
        m_icon = storedIcon;
        m_otherwise = otherwise;
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        const SurfaceTokens& t = m_look.tokens().on(Surface::Window);
        QColor ground = blended(t.accent, 0.12, t.ground);
        QColor ink = readableInk(t.accent, ground, iconContrast);
        if (m_cover) {
            const CoverColors cover = coverColors(*m_cover, m_icon, m_look.tokens());
            ground = cover.washStart;
            ink = cover.ink;
        }
        drawPanel(painter, rect(), 10, ground);
        if (hasIconDrawing(m_icon))
            drawStoredIcon(painter, rect(), m_icon, 24, ink);
        else
            drawSymbol(painter, rect(), m_otherwise, 24, ink);
    }

private:
    const Look& m_look;
    QString m_icon;
    std::optional<QString> m_cover;
    Symbol m_otherwise = Symbol::Note;
};

Symbol defaultSymbol(TitledItem::Kind kind)
{
    switch (kind) {
    case TitledItem::Kind::Note:
        return Symbol::Note;
    case TitledItem::Kind::Folder:
        return Symbol::Folder;
    case TitledItem::Kind::Project:
        return Symbol::Project;
    }
    return Symbol::Note;
}

} // namespace

IconsAndTitlesWindow* IconsAndTitlesWindow::open(const TitledItem& item, AppState& appState,
                                                 Look& look, QWidget* parent, Begin begin)
{
    QPointer<IconsAndTitlesWindow> window;
    for (QWidget* each : QApplication::topLevelWidgets()) {
        auto* candidate = qobject_cast<IconsAndTitlesWindow*>(each);
        if (candidate && candidate->isVisible())
            window = candidate;
    }
    if (!window)
        window = new IconsAndTitlesWindow(appState, look, parent ? parent->window() : nullptr);
    window->setItem(item);
    if (!window)
        return nullptr;
    if (!window->content()) {
        window->close();
        return nullptr;
    }
    if (!window->isVisible() && parent)
        centreOver(*window, *parent->window());
    window->show();
    window->raise();
    window->activateWindow();
    QWidget* first = begin == Begin::AtDone ? static_cast<QWidget*>(window->m_done)
                                            : static_cast<QWidget*>(window->m_search);
    first->setFocus(Qt::OtherFocusReason);
    return window;
}

IconsAndTitlesWindow::IconsAndTitlesWindow(AppState& appState, Look& look, QWidget* parent)
    : SurfacePanel(look, Surface::Window, parent)
    , m_appState(appState)
    , m_title(new QLineEdit(this))
    , m_search(new QLineEdit(this))
    , m_grid(new QListView(this))
    , m_icons(new IconGridModel(this))
    , m_noMatch(
          makeLabel(tr("No icon goes by that word."), TextStyle::Body, LabelInk::Secondary, this))
    , m_titleDelay(new QTimer(this))
{
    setWindowFlag(Qt::Window);
    setAttribute(Qt::WA_DeleteOnClose);
    setObjectName(QStringLiteral("iconsAndTitles"));
    setWindowTitle(tr("Icons and Titles"));
    declareKeyFocus(this, KeyFocus::Closed);
    resize(460, 560);
    setMinimumSize(360, 400);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(padding, padding, padding, padding);
    layout->setSpacing(0);
    layout->addWidget(makeHead());
    layout->addSpacing(16);
    m_title->setAccessibleName(tr("Title"));
    m_title->installEventFilter(this);
    layout->addWidget(m_title);
    layout->addSpacing(16);
    m_search->setPlaceholderText(tr("Search icons"));
    m_search->setAccessibleName(tr("Search icons"));
    m_search->addAction(look.icon(Symbol::Search, Surface::Window, &SurfaceTokens::textSecondary),
                        QLineEdit::LeadingPosition);
    m_search->installEventFilter(this);
    layout->addWidget(m_search);
    layout->addSpacing(8);
    m_grid->setModel(m_icons);
    m_grid->setItemDelegate(new IconCell(look, this));
    m_grid->setViewMode(QListView::IconMode);
    m_grid->setMovement(QListView::Static);
    m_grid->setResizeMode(QListView::Adjust);
    m_grid->setUniformItemSizes(true);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setFrameShape(QFrame::NoFrame);
    m_grid->viewport()->setAutoFillBackground(false);
    m_grid->setMouseTracking(true);
    m_grid->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_grid->setAccessibleName(tr("Icons"));
    m_grid->installEventFilter(this);
    layout->addWidget(m_grid, 1);
    m_noMatch->setAlignment(Qt::AlignCenter);
    layout->addWidget(m_noMatch, 1);
    layout->addWidget(makeCoverRow());
    layout->addSpacing(16);
    layout->addLayout(makeFoot());
    m_titleDelay->setSingleShot(true);
    m_titleDelay->setInterval(titlePause);
    connect(m_titleDelay, &QTimer::timeout, this, &IconsAndTitlesWindow::applyTitle);
    connect(m_title, &QLineEdit::textEdited, this, [this] { m_titleDelay->start(); });
    connect(m_title, &QLineEdit::editingFinished, this, &IconsAndTitlesWindow::applyTitle);
    connect(m_search, &QLineEdit::textChanged, this, &IconsAndTitlesWindow::showIcons);
    connect(m_grid, &QListView::clicked, this, &IconsAndTitlesWindow::chooseCurrent);
    const auto followItem = [this] {
        follow();
    };
    connect(&appState, &AppState::notebookChanged, this, followItem);
    connect(&appState.projectSession(), &ProjectSession::projectsChanged, this, followItem);
    connect(&appState, &AppState::notebookReset, this, followItem);
    showIcons();
}

QWidget* IconsAndTitlesWindow::makeHead()
{
    auto* head = new QWidget(this);
    head->setFixedHeight(pictureSize);
    auto* row = new QHBoxLayout(head);
    row->setContentsMargins({});
    row->setSpacing(16);
    m_picture = new PictureTile(look(), head);
    row->addWidget(m_picture);
    auto* words = new QVBoxLayout;
    words->setSpacing(4);
    words->addStretch();
    m_kind = makeLabel({}, TextStyle::SectionHead, LabelInk::Secondary);
    words->addWidget(m_kind);
    m_shownTitle = new ElidedLabel(head);
    setTextStyle(m_shownTitle, TextStyle::WindowTitle);
    words->addWidget(m_shownTitle);
    words->addStretch();
    row->addLayout(words, 1);
    return head;
}

QWidget* IconsAndTitlesWindow::makeCoverRow()
{
    m_coverRow = new QWidget(this);
    auto* row = new QHBoxLayout(m_coverRow);
    row->setContentsMargins(0, 12, 0, 0);
    QLabel* label = makeLabel(tr("Cover"), TextStyle::Body);
    m_cover = new QComboBox(m_coverRow);
    m_cover->setAccessibleName(label->text());
    m_cover->setIconSize({coverDot, coverDot});
    label->setBuddy(m_cover);
    row->addWidget(label);
    row->addStretch();
    row->addWidget(m_cover);
    connect(m_cover, &QComboBox::activated, this, [this](int index) {
        const QString color = m_cover->itemData(index).toString();
        m_appState.projectSession().updateProjectCover(
            projectFolder(), color.isEmpty() ? std::nullopt : std::optional(color));
    });
    connect(&look(), &Look::changed, this, &IconsAndTitlesWindow::fillCovers);
    fillCovers();
    return m_coverRow;
}

void IconsAndTitlesWindow::fillCovers()
{
    const auto dot = [this](const QString& color, const QString& icon) {
        const double ratio = devicePixelRatioF();
        QPixmap picture(QSize(coverDot, coverDot) * ratio);
        picture.setDevicePixelRatio(ratio);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        drawPanel(painter, QRectF(0, 0, coverDot, coverDot), 4,
                  coverColors(color, icon, look().tokens()).ink);
        return QIcon(picture);
    };
    const auto now = content();
    const QString icon = now ? now->icon.value_or(QString()) : QString();
    const QString chosen = now ? now->cover : QString();
    m_cover->clear();
    m_cover->addItem(dot({}, icon), tr("As the icon"), QString());
    for (const CoverChoice& each : coverChoices())
        m_cover->addItem(dot(each.stored, icon), each.title, each.stored);
    // A colour of another version of the program is kept.
    if (!chosen.isEmpty() && m_cover->findData(chosen) < 0)
        m_cover->addItem(dot(chosen, icon), chosen, chosen);
    m_cover->setCurrentIndex(std::max(0, m_cover->findData(chosen)));
}

QLayout* IconsAndTitlesWindow::makeFoot()
{
    auto* foot = new QHBoxLayout;
    foot->setSpacing(10);
    m_remove = new QPushButton(tr("Remove Icon"), this);
    m_done = new QPushButton(tr("Done"), this);
    setButtonTone(m_done, ButtonTone::Accent);
    foot->addWidget(m_remove);
    foot->addStretch();
    foot->addWidget(m_done);
    connect(m_remove, &QPushButton::clicked, this, [this] { applyIcon(std::nullopt); });
    connect(m_done, &QPushButton::clicked, this, &QWidget::close);
    return foot;
}

std::optional<IconsAndTitlesWindow::Content> IconsAndTitlesWindow::content() const
{
    switch (m_item.kind) {
    case TitledItem::Kind::Note:
        if (const NoteRecord* note = m_appState.note(m_item.id))
            return Content{note->title, note->titleForList(), note->iconName};
        break;
    case TitledItem::Kind::Folder:
        if (const FolderRecord* folder = m_appState.folder(m_item.id))
            return Content{folder->name, folder->titleForList(), folder->iconName};
        break;
    case TitledItem::Kind::Project:
        if (const OrvaneProjectRecord* project = m_appState.projectSession().project(m_item.id))
            return Content{project->name, project->titleForDisplay(), project->iconName,
                           project->coverColor.value_or(QString())};
        break;
    }
    return std::nullopt;
}

QString IconsAndTitlesWindow::projectFolder() const
{
    const OrvaneProjectRecord* project = m_appState.projectSession().project(m_item.id);
    return project ? project->rootPath : QString();
}

void IconsAndTitlesWindow::setItem(const TitledItem& item)
{
    applyTitle();
    m_item = item;
    m_titleDelay->stop();
    const auto now = content();
    m_title->setText(now ? now->title : QString());
    follow();
}

void IconsAndTitlesWindow::follow()
{
    const auto now = content();
    if (!now) {
        m_titleDelay->stop();
        if (isVisible())
            close();
        return;
    }
    showHead(*now);
    if (!m_title->hasFocus() && !m_titleDelay->isActive() && m_title->text() != now->title)
        m_title->setText(now->title);
}

void IconsAndTitlesWindow::showHead(const Content& content)
{
    const QString kinds[] = {tr("Note"), tr("Folder"), tr("Project")};
    m_kind->setText(kinds[int(m_item.kind)]);
    m_shownTitle->setText(content.shownTitle);
    m_title->setPlaceholderText(content.shownTitle);
    const QString icon = content.icon.value_or(QString());
    static_cast<PictureTile*>(m_picture)->setPicture(icon, defaultSymbol(m_item.kind));
    m_icons->setChosen(iconChoiceName(icon));
    m_coverRow->setVisible(m_item.kind == TitledItem::Kind::Project);
    if (m_item.kind == TitledItem::Kind::Project)
        fillCovers();
    static_cast<PictureTile*>(m_picture)->setCover(
        m_item.kind == TitledItem::Kind::Project ? std::optional(content.cover) : std::nullopt);
    const bool writable =
        m_item.kind == TitledItem::Kind::Project || !m_appState.projectSession().isReadOnly();
    m_remove->setEnabled(content.icon.has_value() && writable);
    m_title->setReadOnly(!writable);
}

void IconsAndTitlesWindow::showIcons()
{
    m_icons->setChoices(iconChoicesMatching(m_search->text()));
    const bool any = m_icons->rowCount() > 0;
    m_grid->setVisible(any);
    m_noMatch->setVisible(!any);
    if (any)
        m_grid->setCurrentIndex(m_icons->index(0));
}

void IconsAndTitlesWindow::applyTitle()
{
    m_titleDelay->stop();
    const auto now = content();
    const QString title = m_title->text();
    if (!now || title == now->title || m_title->isReadOnly())
        return;
    switch (m_item.kind) {
    case TitledItem::Kind::Note:
        (void)m_appState.updateNoteBinderTitle(m_item.id, title, std::nullopt);
        break;
    case TitledItem::Kind::Folder:
        (void)m_appState.updateFolderBinderTitle(m_item.id, title, std::nullopt);
        break;
    case TitledItem::Kind::Project:
        return m_appState.projectSession().updateProjectMetadata(projectFolder(), title,
                                                                 std::nullopt, now->icon);
    }
}

void IconsAndTitlesWindow::applyIcon(const std::optional<QString>& icon)
{
    const auto now = content();
    // A stored value that means the same picture stays as it is spelt.
    if (!now || now->icon == icon ||
        (now->icon && icon && iconChoiceName(*now->icon) == iconChoiceName(*icon)))
        return;
    switch (m_item.kind) {
    case TitledItem::Kind::Note:
        (void)m_appState.updateNoteIcon(m_item.id, icon);
        break;
    case TitledItem::Kind::Folder:
        (void)m_appState.updateFolderIcon(m_item.id, icon);
        break;
    case TitledItem::Kind::Project:
        return m_appState.projectSession().updateProjectIcon(projectFolder(), icon);
    }
}

void IconsAndTitlesWindow::chooseCurrent()
{
    const QModelIndex current = m_grid->currentIndex();
    if (current.isValid())
        applyIcon(current.data(IconGridModel::NameRole).toString());
}

bool IconsAndTitlesWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return SurfacePanel::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool isReturn = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (watched == m_search && (key == Qt::Key_Down || isReturn) && m_icons->rowCount() > 0) {
        if (isReturn)
            chooseCurrent();
        else
            m_grid->setFocus(Qt::TabFocusReason);
        return true;
    }
    if (watched == m_grid && (isReturn || key == Qt::Key_Space)) {
        chooseCurrent();
        return true;
    }
    if (watched == m_title && isReturn)
        m_search->setFocus(Qt::TabFocusReason);
    return SurfacePanel::eventFilter(watched, event);
}

void IconsAndTitlesWindow::keyPressEvent(QKeyEvent* event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    auto* button = qobject_cast<QPushButton*>(focusWidget());
    if (event->key() == Qt::Key_Escape)
        close();
    else if (isReturn && button)
        button->click();
    else
        SurfacePanel::keyPressEvent(event);
}

void IconsAndTitlesWindow::closeEvent(QCloseEvent* event)
{
    applyTitle();
    SurfacePanel::closeEvent(event);
    if (parentWidget())
        parentWidget()->activateWindow();
}

} // namespace orvane
