// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "editor/page/PageTools.h"

#include "commands/KeyTable.h"
#include "editor/page/PageBreaks.h"
#include "editor/page/PageFit.h"
#include "editor/page/PageRuler.h"
#include "editor/pane/EditorTextHost.h"
#include "editor/view/EditorView.h"
#include "text/store/TextStore.h"

#include <QBoxLayout>
#include <QShortcut>

#include <algorithm>
#include <cmath>

namespace orvane {

namespace Commands = AppCommandEvents;

namespace {

constexpr double zoomStep = 1.1;
// As the settings offer it.
constexpr double leastZoom = 0.5;
constexpr double mostZoom = 3;
constexpr double zoomLadder[] = {0.5, 0.75, 0.9, 1, 1.1, 1.25, 1.5, 1.75, 2, 2.5, 3};

} // namespace

PageTools::PageTools(EditorTextHost& host, const Services& services, Look& look,
                     QWidget& afterRuler)
    : m_host(host)
    , m_services(services)
    , m_look(look)
    , m_ruler(new PageRuler(host, look, services.defaults, afterRuler, host.parentWidget()))
{
    qobject_cast<QBoxLayout*>(host.parentWidget()->layout())->insertWidget(0, m_ruler);
    connect(&host, &EditorTextHost::textPlaced, this, &PageTools::showRuler);
    showRuler();
    connect(&host.view(), &EditorView::zoomRequested, this, &PageTools::zoomBy);
    observe(Commands::zoomIn, &PageTools::zoomIn);
    observe(Commands::zoomOut, &PageTools::zoomOut);
    observe(Commands::resetZoom, &PageTools::resetZoom);
    makeZoomKeys();
    observe(Commands::togglePageView, &PageTools::togglePageView);
    observe(Commands::toggleRuler, &PageTools::toggleRuler);
    observe(Commands::insertPageBreak, &PageTools::breakPage);
}

PageTools::~PageTools()
{
    delete m_ruler;
}

void PageTools::showRuler()
{
    m_ruler->setVisible(m_host.parameters().rulerVisible);
}

/// A command without a note is meant for what is shown.
void PageTools::observe(const Notification<CommandTarget>& command, void (PageTools::*act)())
{
    m_observations.push_back(
        m_services.notifications.observe(command, [this, act](const CommandTarget& target) {
            const auto& shown = m_host.parameters().noteID;
            if (shown && (target.noteID ? target.noteID == shown : m_host.view().isVisible()))
                (this->*act)();
        }));
}

void PageTools::togglePageView()
{
    UserDefaults& defaults = m_services.defaults;
    pageViewEnabledSetting.write(defaults, !pageViewEnabledSetting.read(defaults));
}

void PageTools::toggleRuler()
{
    // An empty text has nothing to measure.
    if (m_host.view().store().isEmpty())
        return;
    UserDefaults& defaults = m_services.defaults;
    rulerVisibleSetting.write(defaults, !rulerVisibleSetting.read(defaults));
}

void PageTools::makeZoomKeys()
{
    const auto addKey = [this](const QKeySequence& keys, void (PageTools::*act)()) {
        connect(new QShortcut(keys, &m_host), &QShortcut::activated, this, act);
    };
    addKey(keySequence(FixedKey::zoomIn), &PageTools::zoomIn);
    addKey(Qt::CTRL | Qt::Key_Equal, &PageTools::zoomIn);
    addKey(keySequence(FixedKey::zoomOut), &PageTools::zoomOut);
    addKey(keySequence(FixedKey::resetZoom), &PageTools::resetZoom);
}

QList<double> PageTools::zoomChoices() const
{
    const bool isPage = m_host.parameters().pageViewEnabled;
    QList<double> choices;
    for (const double zoom : zoomLadder) {
        if (!isPage || (zoom >= leastPageZoom && zoom <= mostPageZoom))
            choices.append(zoom);
    }
    return choices;
}

void PageTools::setZoom(double zoom)
{
    const QList<double> choices = zoomChoices();
    editorDisplayZoomSetting.write(m_services.defaults,
                                   qBound(choices.first(), zoom, choices.last()));
}

void PageTools::zoomIn()
{
    const QList<double> choices = zoomChoices();
    const double shown = m_host.view().zoom();
    const auto next = std::find_if(choices.begin(), choices.end(),
                                   [&](double zoom) { return zoom > shown + 0.005; });
    const bool hasRoom = shown > editorDisplayZoomSetting.read(m_services.defaults) - 0.005;
    if (next != choices.end() && hasRoom)
        setZoom(*next);
}

void PageTools::zoomOut()
{
    const QList<double> choices = zoomChoices();
    const double shown = m_host.view().zoom();
    const auto next = std::find_if(choices.rbegin(), choices.rend(),
                                   [&](double zoom) { return zoom < shown - 0.005; });
    if (next != choices.rend())
        setZoom(*next);
}

void PageTools::resetZoom()
{
    setZoom(editorDisplayZoomSetting.fallback);
}

void PageTools::zoomBy(qreal steps)
{
    const bool isPage = m_host.parameters().pageViewEnabled;
    const double wanted = editorDisplayZoomSetting.read(m_services.defaults);
    const double shown = m_host.view().zoom();
    // A page that has no room to be as large as wanted can only become smaller.
    if (steps > 0 && shown < qMin(wanted, isPage ? mostPageZoom : mostZoom))
        return;
    const double next = std::round(shown * std::pow(zoomStep, steps) * 100) / 100;
    editorDisplayZoomSetting.write(m_services.defaults,
                                   isPage ? qBound(leastPageZoom, next, mostPageZoom)
                                          : qBound(leastZoom, next, mostZoom));
}

void PageTools::breakPage()
{
    EditorView& view = m_host.view();
    const QColor line = m_look.tokens().on(Surface::Page).border;
    if (!view.isEditable() || !insertPageBreak(view.gateway(), view.formatting(), line))
        return m_services.beeper.beep();
    view.ensureCaretVisible();
}

} // namespace orvane
