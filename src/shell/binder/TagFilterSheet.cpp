// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/binder/TagFilterSheet.h"

#include "appearance/OrvaneStyle.h"
#include "core/records/Wording.h"

#include <QAbstractListModel>
#include <QCoreApplication>
#include <QPushButton>

#include <limits>

namespace orvane {

/// The tags that match what is searched for, ticked where the Binder is filtered for them.
class TagFilterModel final : public QAbstractListModel {
public:
    explicit TagFilterModel(const AppState& appState)
        : m_appState(appState)
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

TagFilterSheet::TagFilterSheet(AppState& appState, Look& look, QWidget* parent)
    : TagFilterSheet(std::make_unique<TagFilterModel>(appState), appState, look, parent)
{}

TagFilterSheet::TagFilterSheet(std::unique_ptr<TagFilterModel> model, AppState& appState,
                               Look& look, QWidget* parent)
    : SearchListSheet({tr("Filter by Tag"), tr("Find a tag")}, *model, Form::Sheet, look, parent)
    , m_model(std::move(model))
    , m_appState(appState)
{
    connect(&m_appState, &AppState::activeTagFilterChanged, m_model.get(),
            &TagFilterModel::filterChanged);
    QPushButton* done = addButton(tr("Done"));
    setButtonTone(done, ButtonTone::Accent);
    connect(done, &QPushButton::clicked, this, [this] { dismiss(); });
    refresh();
}

TagFilterSheet::~TagFilterSheet() = default;

void TagFilterSheet::search(const QString& text)
{
    m_model->search(text);
}

void TagFilterSheet::choose(const QModelIndex& index)
{
    m_appState.toggleTagFilter(m_model->tag(index));
}

} // namespace orvane
