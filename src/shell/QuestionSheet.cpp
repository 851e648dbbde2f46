// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/QuestionSheet.h"

#include "appearance/OrvaneStyle.h"
#include "shell/MessageText.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEventLoop>
#include <QFileDialog>
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

/// The handle of a question that is on the screen.
class ShownSheet final : public ShownQuestion {
public:
    explicit ShownSheet(QuestionSheet* sheet)
        : m_sheet(sheet)
    {}
    ~ShownSheet() override
    {
        if (m_sheet)
            m_sheet->withdraw();
    }
    void change(const Question& question) override
    {
        if (m_sheet)
            m_sheet->change(question);
    }

private:
    QPointer<QuestionSheet> m_sheet;
};

} // namespace

QuestionSheet::QuestionSheet(const Question& question, Look& look, QWidget* parent)
    : Sheet(look, parent)
    , m_question(question)
    , m_answer{cancelAnswer(question), false, 0}
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
    answerWith(cancelAnswer(m_question));
}

void QuestionSheet::answerWith(int button)
{
    m_answer.button = button;
    m_answer.suppress = m_suppression && m_suppression->isChecked();
    m_answer.choice = m_choices ? m_choices->currentIndex() : 0;
    close();
}

void QuestionSheet::change(const Question& question)
{
    m_question = question;
}

void QuestionSheet::withdraw()
{
    disconnect(this, &Sheet::finished, nullptr, nullptr);
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
        return {cancelAnswer(question), false, 0};
    auto* sheet = new QuestionSheet(question, *m_look);
    Answer answer{cancelAnswer(question), false, 0};
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

std::unique_ptr<ShownQuestion> SheetQuestions::show(const Question& question,
                                                    std::function<void(const Answer&)> answered)
{
    if (!m_host || !m_look)
        return nullptr;
    auto* sheet = new QuestionSheet(question, *m_look);
    QObject::connect(
        sheet, &Sheet::finished, sheet,
        [sheet, answered = std::move(answered)] { answered(sheet->answer()); },
        Qt::QueuedConnection);
    m_host->present(sheet);
    return std::make_unique<ShownSheet>(sheet);
}

QString SheetQuestions::fileToSave(const QString& title, const QString& suggestedPath)
{
    return QFileDialog::getSaveFileName(m_host ? m_host->window() : nullptr, title, suggestedPath);
}

} // namespace orvane
