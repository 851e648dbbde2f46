// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/binder/TagFilterSheet.h"

#include "appearance/OrvaneStyle.h"
#include "core/records/Wording.h"

#include <QAbstractListModel>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QVBoxLayout>

#include <limits>

namespace orvane {

/// The tags that match what is searched for, ticked where the Binder is filtered for them.
class TagFilterModel final : public QAbstractListModel {
public:
    TagFilterModel(const AppState& appState, QObject* parent)
        : QAbstractListModel(parent)
        , m_appState(appState)
    {}

    void search(const QString& text)
    {
        beginResetModel();
        m_tags =
            tagsContaining(m_appState.tagLibrary(), text, std::numeric_limits<qsizetype>::max());
        endResetModel();
    }
    [[nodiscard]] QString tag(const QModelIndex& index) const { return m_tags.value(index.row()); }
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_tags.size());
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override
    {
        const QString tag = m_tags.value(index.row());
        if (role == Qt::DisplayRole)
            return QCoreApplication::translate("TagFilterModel", "%1  (%2)", "a tag and its notes")
                .arg(tag, grouped(m_appState.tagCount(tag)));
        if (role == Qt::CheckStateRole)
            return containsTag(m_appState.activeTagFilter().values(), tag) ? Qt::Checked
                                                                           : Qt::Unchecked;
        return {};
    }
    void filterChanged()
    {
        if (!m_tags.isEmpty())
            emit dataChanged(index(0), index(int(m_tags.size()) - 1), {Qt::CheckStateRole});
    }

private:
    const AppState& m_appState;
    QStringList m_tags;
};

namespace {

constexpr int cardWidth = 440;
constexpr int padding = 28;
constexpr int listHeight = 320;

} // namespace

TagFilterSheet::TagFilterSheet(AppState& appState, Look& look, QWidget* parent)
    : Sheet(look, parent)
    , m_appState(appState)
    , m_model(new TagFilterModel(appState, this))
    , m_field(new QLineEdit(this))
    , m_list(new QListView(this))
{
    const QString title = tr("Filter by Tag");
    setAccessibleName(title);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(padding, padding - 4, padding, padding - 4);
    layout->setSpacing(8);
    layout->addWidget(makeLabel(title, TextStyle::WindowTitle));
    m_field->setPlaceholderText(tr("Find a tag"));
    m_field->setAccessibleName(tr("Find a tag"));
    m_field->installEventFilter(this);
    layout->addWidget(m_field);
    m_list->setModel(m_model);
    m_list->setAccessibleName(title);
    m_list->setFixedHeight(listHeight);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setUniformItemSizes(true);
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    layout->addWidget(m_list);
    layout->addSpacing(4);
    layout->addLayout(makeButtons());
    connect(m_field, &QLineEdit::textChanged, this, &TagFilterSheet::search);
    connect(m_list, &QListView::clicked, this, &TagFilterSheet::toggle);
    connect(&m_appState, &AppState::activeTagFilterChanged, m_model,
            &TagFilterModel::filterChanged);
    search({});
}

TagFilterSheet::~TagFilterSheet() = default;

QLayout* TagFilterSheet::makeButtons()
{
    auto* row = new QHBoxLayout;
    auto* done = new QPushButton(tr("Done"), this);
    setButtonTone(done, ButtonTone::Accent);
    row->addStretch();
    row->addWidget(done);
    connect(done, &QPushButton::clicked, this, [this] { dismiss(); });
    return row;
}

QWidget* TagFilterSheet::initialFocus()
{
    return m_field;
}

QSize TagFilterSheet::sizeHint() const
{
    return {cardWidth, layout()->sizeHint().height()};
}

void TagFilterSheet::search(const QString& text)
{
    m_model->search(text.trimmed());
    m_list->setCurrentIndex(m_model->index(0));
}

void TagFilterSheet::toggle(const QModelIndex& index)
{
    if (index.isValid())
        m_appState.toggleTagFilter(m_model->tag(index));
}

bool TagFilterSheet::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_field || event->type() != QEvent::KeyPress)
        return Sheet::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        QApplication::sendEvent(m_list, event);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        toggle(m_list->currentIndex());
        return true;
    default:
        return Sheet::eventFilter(watched, event);
    }
}

} // namespace orvane
