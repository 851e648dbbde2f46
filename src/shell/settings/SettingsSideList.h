// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"

#include <QListWidget>

namespace orvane {

/// The pages of the settings window by picture and name, one of them chosen.
class SettingsSideList : public QListWidget {
    Q_OBJECT
public:
    explicit SettingsSideList(const Look& look, QWidget* parent = nullptr);

    void addPage(Symbol symbol, const QString& title);
};

} // namespace orvane
