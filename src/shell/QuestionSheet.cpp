// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/QuestionSheet.h"

#include "appearance/OrvaneStyle.h"
#include "shell/MessageText.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEventLoop>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvane {

namespace {

constexpr int narrow = 440;
constexpr int wide = 560;
constexpr int padding = 28;
/// Longer messages get the wider card.
constexpr qsizetype longMessage = 200;

int cancelButton(const Question& question)
{
    return question.cancelButton >= 0 ? question.cancelButton : int(question.buttons.size()) - 1;
}

} // namespace

QuestionSheet::QuestionSheet(const Question& question, Look& look, QWidget* parent)
    : Sheet(look, parent)
    , m_question(question)
    , m_answer{cancelButton(question), false, 0}
{
    setAccessibleName(question.title);
    setAccessibleDescription(question.text);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(padding, padding - 4, padding, padding - 4);
    layout->setSpacing(8);
    const int textWidth = sizeHint().width() - 2 * padding;
    auto* title = makeLabel(question.title, TextStyle::WindowTitle);
    title->setWordWrap(true);
    layout->addWidget(title);
    if (!question.text.isEmpty())
        layout->addWidget(new MessageText(question.text, textWidth, this));
    if (!question.choices.isEmpty()) {
        m_choices = new QComboBox(this);
        m_choices->addItems(question.choices);
        m_choices->setAccessibleName(question.title);
        layout->addSpacing(4);
        layout->addWidget(m_choices);
    }
    if (!question.suppression.isEmpty()) {
        m_suppression = new QCheckBox(question.suppression, this);
        layout->addSpacing(4);
        layout->addWidget(m_suppression);
    }
    layout->addSpacing(12);
    layout->addWidget(makeButtons());
}

QWidget* QuestionSheet::makeButtons()
{
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    layout->setSpacing(10);
    layout->addStretch();
    for (qsizetype i = m_question.buttons.size() - 1; i >= 0; --i) {
        auto* button = new QPushButton(m_question.buttons.at(i), row);
        button->setMinimumWidth(84);
        if (i == m_question.defaultButton) {
            button->setDefault(true);
            m_default = button;
        }
        if (m_question.tone == Question::Tone::Destructive && i == 0)
            setButtonTone(button, ButtonTone::Danger);
        connect(button, &QPushButton::clicked, this, [this, i] { answerWith(int(i)); });
        layout->addWidget(button);
    }
    return row;
}

QSize QuestionSheet::sizeHint() const
{
    const int width = m_question.text.size() > longMessage ? wide : narrow;
    return {width, layout() ? layout()->sizeHint().height() : 0};
}

QWidget* QuestionSheet::initialFocus()
{
    return m_default;
}

void QuestionSheet::dismiss()
{
    answerWith(cancelButton(m_question));
}

void QuestionSheet::answerWith(int button)
{
    m_answer.button = button;
    m_answer.suppress = m_suppression && m_suppression->isChecked();
    m_answer.choice = m_choices ? m_choices->currentIndex() : 0;
    close();
}

void SheetQuestions::setHost(SheetHost* host, Look* look)
{
    m_host = host;
    m_look = look;
}

Answer SheetQuestions::ask(const Question& question)
{
    if (!m_host || !m_look)
        return {cancelButton(question), false, 0};
    auto* sheet = new QuestionSheet(question, *m_look);
    Answer answer{cancelButton(question), false, 0};
    QEventLoop loop;
    QObject::connect(sheet, &Sheet::finished, &loop, [&] {
        answer = sheet->answer();
        loop.quit();
    });
    // The window may go while the question is open.
    QObject::connect(sheet, &QObject::destroyed, &loop, &QEventLoop::quit);
    m_host->present(sheet);
    loop.exec(QEventLoop::DialogExec);
    return answer;
}

} // namespace orvane
