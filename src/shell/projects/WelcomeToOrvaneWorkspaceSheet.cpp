// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/projects/WelcomeToOrvaneWorkspaceSheet.h"

#include "appearance/Drawing.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvane {

namespace {

constexpr int cardWidth = 640;
constexpr int padding = 40;

/// An accent icon on its tinted square.
class IconTile final : public QWidget {
public:
    IconTile(Look& look, Symbol symbol, QWidget* parent)
        : QWidget(parent)
        , m_look(look)
        , m_symbol(symbol)
    {
        setFixedSize(36, 36);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        const Tokens& t = m_look.tokens();
        drawPanel(painter, rect(), 8, t.accentWash);
        drawSymbol(painter, rect(), m_symbol, 16, t.on(Surface::Card).accent);
    }

private:
    Look& m_look;
    Symbol m_symbol;
};

} // namespace

WelcomeToOrvaneWorkspaceSheet::WelcomeToOrvaneWorkspaceSheet(Visitor visitor, Look& look,
                                                             QWidget* parent)
    : Sheet(look, parent)
{
    setAccessibleName(tr("Welcome to OrvaneWorkspace"));
    const bool isNew = visitor == Visitor::New;
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(padding, 37, padding, 28);
    layout->setSpacing(0);
    layout->addWidget(makeLabel(tr("Welcome to OrvaneWorkspace"), TextStyle::SheetTitle));
    layout->addSpacing(7);
    layout->addWidget(
        makeLabel(isNew ? tr("Create a project and start writing in a local-first workspace.")
                        : tr("A few starting points before you continue."),
                  TextStyle::SheetText, LabelInk::Secondary));
    layout->addSpacing(22);
    layout->addWidget(
        makePoint(Symbol::AllProjects, tr("Projects stay visible"),
                  tr("Each one is a folder on your own disk, easy to find and to back up.")));
    layout->addSpacing(16);
    layout->addWidget(
        makePoint(Symbol::Panes, tr("Binder, editor, inspector"),
                  tr("An outline on the left, the page in the middle, details on the right.")));
    layout->addSpacing(16);
    layout->addWidget(makePoint(Symbol::Help, tr("Help is always available"),
                                tr("Press F1 and read the guide, wherever you are.")));
    layout->addSpacing(24);

    auto* row = new QHBoxLayout;
    row->setSpacing(10);
    auto* guide = new QPushButton(tr("Read Guide"), this);
    auto* blank = new QPushButton(tr("Blank Project"), this);
    auto* starter = new QPushButton(
        isNew ? tr("Start with Starter Project") : tr("Create Starter Project"), this);
    starter->setDefault(true);
    m_starter = starter;
    row->addWidget(guide);
    row->addStretch();
    row->addWidget(blank);
    row->addWidget(starter);
    layout->addLayout(row);
    connect(guide, &QPushButton::clicked, this, &WelcomeToOrvaneWorkspaceSheet::guideRequested);
    connect(blank, &QPushButton::clicked, this, &WelcomeToOrvaneWorkspaceSheet::blankChosen);
    connect(starter, &QPushButton::clicked, this, &WelcomeToOrvaneWorkspaceSheet::starterChosen);
}

QWidget* WelcomeToOrvaneWorkspaceSheet::makePoint(Symbol symbol, const QString& title,
                                                  const QString& text)
{
    auto* point = new QWidget(this);
    point->setFixedHeight(40);
    auto* row = new QHBoxLayout(point);
    row->setContentsMargins({});
    row->setSpacing(14);
    row->addWidget(new IconTile(look(), symbol, point));
    auto* words = new QVBoxLayout;
    words->setSpacing(4);
    words->addWidget(makeLabel(title, TextStyle::BodyStrong));
    words->addWidget(makeLabel(text, TextStyle::Body, LabelInk::Secondary));
    row->addLayout(words, 1);
    return point;
}

QWidget* WelcomeToOrvaneWorkspaceSheet::initialFocus()
{
    return m_starter;
}

QSize WelcomeToOrvaneWorkspaceSheet::sizeHint() const
{
    return {cardWidth, layout()->sizeHint().height()};
}

GuideSheet::GuideSheet(const QString& libraryPath, Look& look, QWidget* parent)
    : Sheet(look, parent)
{
    setAccessibleName(tr("Guide"));
    struct Chapter {
        QString title;
        QString text;
    };
    const Chapter chapters[] = {
        {tr("Projects"),
         tr("A project is a folder in %1. Copy it to back it up; move it away to put it aside. The "
            "Projects browser shows what is there.")
             .arg(libraryPath)},
        {tr("Writing"),
         tr("The Binder on the left is the outline. The two buttons below it make a note and a "
            "folder, "
            "where the selection stands; so does Ctrl+N in the Binder. The title sits above the "
            "text: Return goes from one to the other.")},
        {tr("Saving"),
         tr("There is nothing to save by hand. What you type is written a moment after you pause, "
            "when you go to another note, and when you quit. The line below the page says so, and "
            "says it plainly should writing ever fail.")},
        {tr("Getting about"),
         tr("Ctrl+O shows the projects. Alt+Left and Alt+Right go back and forward through the "
            "notes you were in. In the Binder the arrow keys move, open and close. F1 opens this "
            "guide.")},
        {tr("When something is wrong"),
         tr("A project whose files are damaged stays closed and its files are put in safety beside "
            "it, with a message that says where. Nothing is ever replaced by something empty.")},
    };
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(padding, 34, padding, 28);
    layout->setSpacing(0);
    layout->addWidget(makeLabel(tr("Guide"), TextStyle::SheetTitle));
    layout->addSpacing(16);
    for (const Chapter& chapter : chapters) {
        layout->addWidget(makeLabel(chapter.title, TextStyle::BodyStrong));
        layout->addSpacing(3);
        auto* text = makeLabel(chapter.text, TextStyle::Body, LabelInk::Secondary);
        text->setWordWrap(true);
        layout->addWidget(text);
        layout->addSpacing(16);
    }
    layout->addSpacing(4);
    auto* done = new QPushButton(tr("Done"), this);
    done->setDefault(true);
    m_done = done;
    layout->addWidget(done, 0, Qt::AlignRight);
    connect(done, &QPushButton::clicked, this, [this] { close(); });
}

QWidget* GuideSheet::initialFocus()
{
    return m_done;
}

QSize GuideSheet::sizeHint() const
{
    return {cardWidth, layout()->heightForWidth(cardWidth)};
}

} // namespace orvane
