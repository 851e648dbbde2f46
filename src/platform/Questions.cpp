// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "platform/Questions.h"

namespace orvane {

Answer ScriptedQuestions::ask(const Question& question)
{
    asked.append(question);
    if (answers.empty()) {
        const int last = int(question.buttons.size()) - 1;
        return {question.cancelButton < 0 ? last : question.cancelButton, false, 0};
    }
    const Answer answer = answers.front();
    answers.pop_front();
    return answer;
}

} // namespace orvane
