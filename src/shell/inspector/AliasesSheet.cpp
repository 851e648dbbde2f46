// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/inspector/AliasesSheet.h"

#include "appearance/OrvaneStyle.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvane {

namespace {

constexpr int cardWidth = 440;
constexpr int padding = 28;
constexpr int listHeight = 148;

} // namespace

AliasesSheet::AliasesSheet(AppState& appState, const QString& tag, Look& look, QWidget* parent)
    : Sheet(look, parent)
    , m_appState(appState)
    , m_tag(tag)
    , m_field(new QLineEdit(this))
    , m_add(new QPushButton(tr("Add"), this))
    , m_list(new QListWidget(this))
    , m_empty(makeLabel(tr("No aliases yet."), TextStyle::Body, LabelInk::Secondary, this))
    , m_remove(new QPushButton(tr("Remove Alias"), this))
{
    const QString title = tr("Aliases of “%1”").arg(tag);
    setAccessibleName(title);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(padding, padding - 4, padding, padding - 4);
    layout->setSpacing(8);
    layout->addWidget(makeLabel(title, TextStyle::WindowTitle));
    auto* hint = makeLabel(tr("Words that mean the same. Writing one of them counts as the tag."),
                           TextStyle::Body, LabelInk::Secondary, this);
    hint->setWordWrap(true);
    layout->addWidget(hint);
    layout->addSpacing(4);
    auto* entry = new QHBoxLayout;
    entry->setSpacing(10);
    m_field->setPlaceholderText(tr("Another word"));
    m_field->setAccessibleName(tr("Another word"));
    m_field->setMaxLength(int(longestTag));
    entry->addWidget(m_field, 1);
    entry->addWidget(m_add);
    layout->addLayout(entry);
    m_list->setAccessibleName(title);
    m_list->setFixedHeight(listHeight);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->installEventFilter(this);
    layout->addWidget(m_list);
    m_empty->setFixedHeight(listHeight);
    m_empty->setAlignment(Qt::AlignCenter);
    layout->addWidget(m_empty);
    layout->addSpacing(12);
    layout->addLayout(makeButtons());
    connect(m_field, &QLineEdit::textChanged, this, &AliasesSheet::showAliases);
    connect(m_field, &QLineEdit::returnPressed, this, &AliasesSheet::add);
    connect(m_add, &QPushButton::clicked, this, &AliasesSheet::add);
    connect(m_list, &QListWidget::currentRowChanged, this,
            [this](int row) { m_remove->setEnabled(row >= 0); });
    connect(&m_appState, &AppState::tagSettingsChanged, this, &AliasesSheet::showAliases);
    showAliases();
}

QLayout* AliasesSheet::makeButtons()
{
    auto* row = new QHBoxLayout;
    row->setSpacing(10);
    auto* done = new QPushButton(tr("Done"), this);
    setButtonTone(done, ButtonTone::Accent);
    row->addWidget(m_remove);
    row->addStretch();
    row->addWidget(done);
    connect(m_remove, &QPushButton::clicked, this, &AliasesSheet::removeCurrent);
    connect(done, &QPushButton::clicked, this, [this] { dismiss(); });
    return row;
}

QWidget* AliasesSheet::initialFocus()
{
    return m_field;
}

QSize AliasesSheet::sizeHint() const
{
    return {cardWidth, layout()->hasHeightForWidth() ? layout()->heightForWidth(cardWidth)
                                                     : layout()->sizeHint().height()};
}

void AliasesSheet::showAliases()
{
    const QStringList aliases = m_appState.tagSettings().aliases.value(m_tag.toLower());
    QStringList shown;
    for (int row = 0; row < m_list->count(); ++row)
        shown.append(m_list->item(row)->text());
    if (shown != aliases) {
        const int current = m_list->currentRow();
        m_list->clear();
        m_list->addItems(aliases);
        m_list->setCurrentRow(qMin(current, m_list->count() - 1));
    }
    m_list->setVisible(!aliases.isEmpty());
    m_empty->setVisible(aliases.isEmpty());
    m_remove->setEnabled(m_list->currentRow() >= 0);
    m_add->setEnabled(!m_field->text().trimmed().isEmpty());
}

void AliasesSheet::add()
{
    const QString alias = m_field->text().trimmed();
    m_field->clear();
    if (!alias.isEmpty())
        m_appState.addAlias(alias, m_tag);
    m_field->setFocus();
}

void AliasesSheet::removeCurrent()
{
    const QListWidgetItem* current = m_list->currentItem();
    if (!current)
        return;
    m_appState.removeAlias(current->text(), m_tag);
    if (m_list->count() == 0)
        m_field->setFocus();
}

bool AliasesSheet::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_list && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Delete || key == Qt::Key_Backspace) {
            removeCurrent();
            return true;
        }
    }
    return Sheet::eventFilter(watched, event);
}

} // namespace orvane
