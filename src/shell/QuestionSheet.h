// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/Questions.h"
#include "shell/SheetHost.h"

class QCheckBox;
class QComboBox;
class QPushButton;

namespace orvane {

/// A question of `Questions` as a sheet.
class QuestionSheet : public Sheet {
    Q_OBJECT
public:
    QuestionSheet(const Question& question, Look& look, QWidget* parent = nullptr);

    [[nodiscard]] const Answer& answer() const { return m_answer; }
    [[nodiscard]] QWidget* initialFocus() override;
    void dismiss() override;
    [[nodiscard]] QSize sizeHint() const override;
    /// Shows another question in this one's place.
    void change(const Question& question);
    /// Goes without an answer.
    void withdraw();

private:
    [[nodiscard]] QWidget* makeButtons();
    void answerWith(int button);

    Question m_question;
    Answer m_answer;
    QCheckBox* m_suppression = nullptr;
    QComboBox* m_choices = nullptr;
    QPushButton* m_default = nullptr;
};

/// Asks in the window of a sheet host, and keeps the event loop running until there is an answer.
class SheetQuestions final : public Questions {
public:
    /// Where to ask from now on; before that each question takes the answer that leaves things
    /// alone.
    void setHost(SheetHost* host, Look* look);
    Answer ask(const Question& question) override;
    std::unique_ptr<ShownQuestion> show(const Question& question,
                                        std::function<void(const Answer&)> answered) override;
    QString fileToSave(const QString& title, const QString& suggestedPath) override;

private:
    QPointer<SheetHost> m_host;
    QPointer<Look> m_look;
};

} // namespace orvane
