// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <deque>

namespace orvane {

/// A question or message that must be answered before anything else goes on.
struct Question {
    enum class Tone { Plain, Warning, Destructive };

    QString title;
    QString text;
    /// From the one that acts to the one that leaves things alone. One button makes a message.
    QStringList buttons;
    int defaultButton = 0;
    /// What Escape and closing the window answer; the last button when below zero.
    int cancelButton = -1;
    /// Text of a do-not-ask-again box; empty for none.
    QString suppression;
    /// Entries of a list to choose one from; empty for none.
    QStringList choices;
    Tone tone = Tone::Plain;

    bool operator==(const Question&) const = default;
};

struct Answer {
    int button = 0;
    bool suppress = false;
    int choice = 0;
};

/// Asks the person modal questions. Main thread; returns when the question is answered.
class Questions {
public:
    virtual ~Questions() = default;
    virtual Answer ask(const Question& question) = 0;
};

/// Gives prepared answers in order and remembers what was asked; without an answer left it takes
/// the button that leaves things alone.
class ScriptedQuestions final : public Questions {
public:
    Answer ask(const Question& question) override;

    std::deque<Answer> answers;
    QList<Question> asked;
};

} // namespace orvane
