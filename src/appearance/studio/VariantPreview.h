// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Tokens.h"

#include <QAbstractButton>

namespace orvane {

class Look;

/// A variant of a pair of themes as the main window in it would look. Checked, it is the variant
/// that the studio works on.
class VariantPreview : public QAbstractButton {
    Q_OBJECT
public:
    VariantPreview(const QString& name, Look& look, QWidget* parent = nullptr);

    void showTokens(const Tokens& tokens, bool onScreen);

    [[nodiscard]] QSize sizeHint() const override { return {394, 268}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Look& m_look;
    Tokens m_tokens;
    bool m_onScreen = false;
};

} // namespace orvane
