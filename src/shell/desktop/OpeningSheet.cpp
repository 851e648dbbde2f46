// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/desktop/OpeningSheet.h"

#include "appearance/Drawing.h"
#include "shell/window/ElidedLabel.h"

#include <QHBoxLayout>
#include <QLocale>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace orvane {

using namespace std::chrono_literals;

namespace {

constexpr int sheetWidth = 440;
constexpr int padding = 28;
constexpr int steps = 1000;
constexpr double megabyte = 1e6;

/// A line that fills, in the accent.
class ProgressLine final : public QProgressBar {
public:
    ProgressLine(const Look& look, QWidget* parent)
        : QProgressBar(parent)
        , m_look(look)
    {
        setRange(0, steps);
        setTextVisible(false);
        setFixedHeight(10);
        setFocusPolicy(Qt::StrongFocus); // so that no key of a text presses the button
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        const SurfaceTokens& card = m_look.tokens().on(Surface::Card);
        const QRect line = rect().adjusted(0, 2, 0, -2);
        drawPanel(painter, line, 3, card.control);
        QRect done = line;
        done.setWidth(qMax(6, line.width() * value() / steps));
        drawPanel(painter, QStyle::visualRect(layoutDirection(), line, done), 3, card.accent);
    }

private:
    const Look& m_look;
};

} // namespace

OpeningSheet::OpeningSheet(const TextFilesReader& reader, Look& look, QWidget* parent)
    : Sheet(look, parent)
    , m_reader(reader)
    , m_name(new ElidedLabel(this))
    , m_amount(makeLabel({}, TextStyle::Body, LabelInk::Secondary, this))
    , m_bar(new ProgressLine(look, this))
{
    setAccessibleName(tr("Reading Text Files"));
    setTextStyle(m_name, TextStyle::WindowTitle);
    m_bar->setAccessibleName(accessibleName());
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(padding, padding - 4, padding, padding - 4);
    layout->setSpacing(8);
    layout->addWidget(m_name);
    layout->addWidget(m_bar);
    layout->addWidget(m_amount);
    auto* cancel = new QPushButton(tr("Cancel"), this);
    connect(cancel, &QPushButton::clicked, this, &OpeningSheet::dismiss);
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(cancel);
    layout->addSpacing(4);
    layout->addLayout(row);
    m_refresh.callOnTimeout(this, &OpeningSheet::showProgress);
    m_refresh.start(100ms);
    showProgress();
}

void OpeningSheet::showProgress()
{
    const TextFilesReader::Progress now = m_reader.progress();
    const auto megabytes = [](qint64 bytes) {
        return QLocale(QLocale::English, QLocale::UnitedKingdom)
            .toString(double(bytes) / megabyte, 'f', 1);
    };
    m_name->setText(tr("Reading “%1”").arg(now.name));
    m_amount->setText(tr("%1 of %2 MB").arg(megabytes(now.read), megabytes(now.whole)));
    m_bar->setValue(now.whole > 0 ? int(now.read * steps / now.whole) : 0);
    m_bar->setAccessibleDescription(m_amount->text());
}

QWidget* OpeningSheet::initialFocus()
{
    return m_bar;
}

void OpeningSheet::dismiss()
{
    leave();
    emit cancelled();
}

void OpeningSheet::leave()
{
    m_refresh.stop();
    close();
}

QSize OpeningSheet::sizeHint() const
{
    return {sheetWidth, layout() ? layout()->sizeHint().height() : 0};
}

} // namespace orvane
