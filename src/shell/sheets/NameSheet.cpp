// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/sheets/NameSheet.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvane {

namespace {

constexpr int cardWidth = 440;
constexpr int padding = 28;
constexpr int longestName = 10'000;

} // namespace

NameSheet::NameSheet(const Texts& texts, BlankName blankName, Accept accept, Look& look,
                     QWidget* parent)
    : Sheet(look, parent)
    , m_accept(std::move(accept))
    , m_name(new QLineEdit(texts.initialName, this))
    , m_problem(makeLabel({}, TextStyle::Body, LabelInk::Primary, this))
    , m_button(new QPushButton(texts.acceptButton, this))
{
    setAccessibleName(texts.title);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(padding, padding - 4, padding, padding - 4);
    layout->setSpacing(8);
    layout->addWidget(makeLabel(texts.title, TextStyle::WindowTitle));
    if (!texts.hint.isEmpty()) {
        auto* hint = makeLabel(texts.hint, TextStyle::Body, LabelInk::Secondary, this);
        hint->setWordWrap(true);
        layout->addWidget(hint);
    }
    layout->addSpacing(4);
    m_name->setPlaceholderText(texts.placeholder);
    m_name->setAccessibleName(tr("Name"));
    m_name->setMaxLength(longestName);
    m_name->selectAll();
    layout->addWidget(m_name);
    m_problem->setWordWrap(true);
    m_problem->hide();
    setAlarming(*m_problem);
    layout->addWidget(m_problem);
    layout->addSpacing(12);

    auto* row = new QHBoxLayout;
    row->setSpacing(10);
    auto* cancel = new QPushButton(tr("Cancel"), this);
    m_button->setDefault(true);
    row->addStretch();
    row->addWidget(cancel);
    row->addWidget(m_button);
    layout->addLayout(row);

    connect(cancel, &QPushButton::clicked, this, [this] { dismiss(); });
    connect(m_button, &QPushButton::clicked, this, &NameSheet::accept);
    connect(m_name, &QLineEdit::textChanged, this, [this, blankName] {
        m_button->setEnabled(blankName == BlankName::Allowed ||
                             !m_name->text().trimmed().isEmpty());
    });
    m_button->setEnabled(blankName == BlankName::Allowed || !m_name->text().trimmed().isEmpty());
}

QWidget* NameSheet::initialFocus()
{
    return m_name;
}

QSize NameSheet::sizeHint() const
{
    return {cardWidth, layout()->hasHeightForWidth() ? layout()->heightForWidth(cardWidth)
                                                     : layout()->sizeHint().height()};
}

void NameSheet::accept()
{
    const auto problem = m_accept(m_name->text());
    if (!problem)
        return close();
    m_problem->setText(*problem);
    m_problem->setVisible(!problem->isEmpty());
    if (auto* host = qobject_cast<SheetHost*>(parentWidget()))
        host->layOut();
    m_name->setFocus();
}

} // namespace orvane
