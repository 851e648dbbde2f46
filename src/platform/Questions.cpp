// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "platform/Questions.h"

namespace orvane {

int cancelAnswer(const Question& question)
{
    return question.cancelButton == Question::lastButton ? int(question.buttons.size()) - 1
                                                         : question.cancelButton;
}

class ScriptedQuestions::Handle final : public ShownQuestion {
public:
    Handle(std::shared_ptr<QList<std::shared_ptr<Entry>>> shown, std::shared_ptr<Entry> entry)
        : m_shown(std::move(shown))
        , m_entry(std::move(entry))
    {}
    ~Handle() override { m_shown->removeOne(m_entry); }
    void change(const Question& question) override { m_entry->question = question; }

private:
    std::shared_ptr<QList<std::shared_ptr<Entry>>> m_shown;
    std::shared_ptr<Entry> m_entry;
};

Answer ScriptedQuestions::ask(const Question& question)
{
    asked.append(question);
    if (answers.empty())
        return {cancelAnswer(question), false, 0};
    const Answer answer = answers.front();
    answers.pop_front();
    return answer;
}

std::unique_ptr<ShownQuestion> ScriptedQuestions::show(const Question& question,
                                                       std::function<void(const Answer&)> answered)
{
    asked.append(question);
    const auto entry = std::make_shared<Entry>(question, std::move(answered));
    m_shown->append(entry);
    return std::make_unique<Handle>(m_shown, entry);
}

QString ScriptedQuestions::fileToSave(const QString&, const QString&)
{
    if (files.empty())
        return {};
    const QString path = files.front();
    files.pop_front();
    return path;
}

QList<Question> ScriptedQuestions::shown() const
{
    QList<Question> questions;
    for (const auto& entry : *m_shown)
        questions.append(entry->question);
    return questions;
}

void ScriptedQuestions::answerShown(const Answer& answer)
{
    const auto entry = m_shown->takeLast(); // its answer may show another
    entry->answered(answer);
}

} // namespace orvane
