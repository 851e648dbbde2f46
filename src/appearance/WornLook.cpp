// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/WornLook.h"

#include "appearance/Look.h"
#include "appearance/OrvaneStyle.h"

#include <QApplication>
#include <QToolTip>

namespace orvane {

namespace {

void applyPalette(const Look& look)
{
    setInkPolarity(look.polarity(Surface::Window));
    QApplication::setPalette(look.palette(Surface::Window));
}

} // namespace

void wear(const Look& look)
{
    installFontSubstitutions();
    setInkPolarity(look.polarity(Surface::Window));
    QApplication::setFont(interfaceFont(TextStyle::Body));
    auto* style = new OrvaneStyle(look.tokens());
    QApplication::setStyle(style);
    applyPalette(look);
    QToolTip::setFont(interfaceFont(TextStyle::Body));
    QToolTip::setPalette(look.palette(Surface::Card));
    QObject::connect(&look, &Look::changed, style, [&look] { applyPalette(look); });
}

} // namespace orvane
